#include "unpack/ZipFile.h"

#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t BlockSize = 128 * 1024; // bytes
constexpr char Utf8Mark = 0x08; // in the upper byte of a header's flags

constexpr char MadeByUnix = 3;
constexpr quint32 EntrySignature = 0x02014b50;

constexpr qint64 HeaderSize = 30; // and the name
constexpr qint64 EndRecordSize = 22; // and a comment behind it
constexpr qint64 LongestComment = 65535; // bytes
constexpr qint64 LocatorSize = 20; // of the large end record, just before the end record
constexpr qint64 LargeEndRecordSize = 56; // bytes
constexpr qint64 EntrySize = 46; // and name, extra field and comment
constexpr qint64 LargestDirectory = 1 << 30; // bytes

template <typename T>
T number(const char *at)
{
    return qFromLittleEndian<T>(at);
}

QByteArray bytesAt(int descriptor, qint64 offset, qint64 count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    qint64 filled = 0;
    while (filled < count) {
        const ssize_t got =
            pread(descriptor, bytes.data() + filled, size_t(count - filled), offset + filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return {};
        filled += got;
    }
    return bytes;
}

// The archive's table of contents; empty when there is none to be found.
QByteArray directoryOf(int descriptor, qint64 size, qint64 &offset)
{
    const qint64 tailSize = std::min(size, LocatorSize + EndRecordSize + LongestComment);
    const QByteArray tail = bytesAt(descriptor, size - tailSize, tailSize);
    const qsizetype end = tail.lastIndexOf("PK\x05\x06");
    if (end < 0 || end + EndRecordSize > tail.size())
        return {};
    qint64 length = number<quint32>(tail.constData() + end + 12);
    offset = number<quint32>(tail.constData() + end + 16);
    if (end >= LocatorSize && tail.mid(end - LocatorSize, 4) == "PK\x06\x07") {
        const qint64 large = number<qint64>(tail.constData() + end - LocatorSize + 8);
        const QByteArray record =
            large >= 0 ? bytesAt(descriptor, large, LargeEndRecordSize) : QByteArray();
        if (record.startsWith("PK\x06\x06")) {
            length = number<qint64>(record.constData() + 40);
            offset = number<qint64>(record.constData() + 48);
        }
    }
    if (length <= 0 || length > LargestDirectory || offset < 0 || offset > size - length)
        return {};
    return bytesAt(descriptor, offset, length);
}

// Where the entry's own header stands in the file: in the entry, or where that has no room for it
// in the extra field.
qint64 headerOffset(const char *entry, qint64 nameLength, qint64 extraLength)
{
    constexpr quint32 Full = 0xffffffff;
    const quint32 offset = number<quint32>(entry + 42);
    if (offset != Full)
        return offset;
    const char *at = entry + EntrySize + nameLength;
    const char *const end = at + extraLength;
    while (end - at >= 4) {
        const qint64 length = number<quint16>(at + 2);
        if (number<quint16>(at) == 1) {
            const qint64 before = (number<quint32>(entry + 24) == Full ? 8 : 0)
                + (number<quint32>(entry + 20) == Full ? 8 : 0);
            if (before + 8 <= length && at + 4 + length <= end)
                return number<qint64>(at + 4 + before);
        }
        at += 4 + length;
    }
    return -1;
}

} // namespace

ZipFile::~ZipFile()
{
    if (_descriptor >= 0)
        close(_descriptor);
}

bool ZipFile::open(archive *reader, const QByteArray &path)
{
    struct stat status;
    _descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (_descriptor < 0 || fstat(_descriptor, &status) != 0)
        return false;
    _size = status.st_size;
    _block.resize(BlockSize);
    readDirectory();
    archive_read_set_callback_data(reader, this);
    archive_read_set_read_callback(reader, &ZipFile::read);
    archive_read_set_seek_callback(reader, &ZipFile::seek);
    return archive_read_open1(reader) == ARCHIVE_OK;
}

struct ZipFile::Entry {
    qint64 position; // in the directory
    qint64 header; // its own header
    QByteArray name;
    bool isUnix;
};

void ZipFile::readDirectory()
{
    qint64 offset = 0;
    const QByteArray directory = directoryOf(_descriptor, _size, offset);
    std::vector<Entry> entries;
    for (qint64 at = 0; at + EntrySize <= directory.size();) {
        const char *entry = directory.constData() + at;
        const qint64 name = number<quint16>(entry + 28);
        const qint64 extra = number<quint16>(entry + 30);
        const qint64 comment = number<quint16>(entry + 32);
        if (number<quint32>(entry) != EntrySignature
            || at + EntrySize + name + extra > directory.size())
            break;
        const qint64 header = headerOffset(entry, name, extra);
        if (header < 0 || header >= _size)
            break;
        if (entry[9] & Utf8Mark) {
            _changes.push_back({ offset + at + 9, char(~Utf8Mark), 0 });
            _changes.push_back({ header + 7, char(~Utf8Mark), 0 });
        }
        if (hideBrokenName(offset + at + EntrySize + name,
                           directory.mid(at + EntrySize + name, extra))) {
            const QByteArray own = bytesAt(_descriptor, header, HeaderSize);
            const qint64 end =
                own.isEmpty() ? 0 : header + HeaderSize + number<quint16>(own.constData() + 26);
            if (end > 0)
                hideBrokenName(end,
                               bytesAt(_descriptor, end, number<quint16>(own.constData() + 28)));
        }
        entries.push_back(
            { offset + at, header, QByteArray(entry + EntrySize, name), entry[5] == MadeByUnix });
        at += EntrySize + name + extra + comment;
    }
    maskBackslashes(entries);
    std::ranges::sort(_changes, {}, &Change::position);
}

bool ZipFile::hideBrokenName(qint64 position, const QByteArray &extra)
{
    constexpr qint64 BeforeName = 9; // bytes: id, length, version, checksum
    for (qint64 at = 0; at + 4 <= extra.size();) {
        const qint64 end = at + 4 + number<quint16>(extra.constData() + at + 2);
        if (number<quint16>(extra.constData() + at) == 0x7075 && end <= extra.size()) {
            const QByteArray name = extra.mid(at + BeforeName, end - at - BeforeName);
            if (!name.isEmpty() && QUtf8StringView(name).isValidUtf8())
                return false;
            _changes.push_back({ position + at, 0, 0 });
            return true;
        }
        at = end;
    }
    return false;
}

void ZipFile::maskBackslashes(const std::vector<Entry> &entries)
{
    const auto needsMask = [](const Entry &entry) {
        return entry.isUnix && entry.name.contains('\\');
    };
    if (std::ranges::none_of(entries, needsMask))
        return;
    QSet<QByteArray> taken;
    for (const Entry &entry : entries)
        taken.insert(entry.name);
    for (const Entry &entry : entries) {
        if (!needsMask(entry))
            continue;
        char mask = 1;
        QByteArray masked;
        do
            masked = QByteArray(entry.name).replace('\\', mask);
        while (taken.contains(masked) && ++mask < '/');
        if (taken.contains(masked))
            continue;
        taken.insert(masked);
        _maskedNames.insert(masked, entry.name);
        for (qsizetype at = entry.name.indexOf('\\'); at >= 0;
             at = entry.name.indexOf('\\', at + 1)) {
            _changes.push_back({ entry.position + EntrySize + at, 0, mask });
            _changes.push_back({ entry.header + HeaderSize + at, 0, mask });
        }
    }
}

la_ssize_t ZipFile::read(archive *reader, void *object, const void **bytes)
{
    auto *self = static_cast<ZipFile *>(object);
    ssize_t count = 0;
    do
        count = pread(self->_descriptor, self->_block.data(), self->_block.size(), self->_position);
    while (count < 0 && errno == EINTR);
    if (count < 0) {
        archive_set_error(reader, errno, "%s", "The archive cannot be read");
        return -1;
    }
    auto change = std::ranges::lower_bound(self->_changes, self->_position, {}, &Change::position);
    for (; change != self->_changes.end() && change->position < self->_position + count; ++change) {
        char &byte = self->_block[size_t(change->position - self->_position)];
        byte = char((byte & change->keep) | change->set);
    }
    self->_position += count;
    *bytes = self->_block.data();
    return count;
}

la_int64_t ZipFile::seek(archive *, void *object, la_int64_t offset, int whence)
{
    auto *self = static_cast<ZipFile *>(object);
    const qint64 base = whence == SEEK_END ? self->_size : whence == SEEK_CUR ? self->_position : 0;
    if (base + offset < 0)
        return ARCHIVE_FATAL;
    self->_position = base + offset;
    return self->_position;
}
