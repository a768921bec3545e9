#include "unpack/ZipDirectory.h"

#include <QSet>
#include <QtEndian>

#include <algorithm>

namespace {

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

// The archive's table of contents; empty when there is none to be found.
QByteArray directoryOf(const ZipDirectory::Source &bytesAt, qint64 size, qint64 &offset)
{
    const qint64 tailSize = std::min(size, LocatorSize + EndRecordSize + LongestComment);
    const QByteArray tail = bytesAt(size - tailSize, tailSize);
    const qsizetype end = tail.lastIndexOf("PK\x05\x06");
    if (end < 0 || end + EndRecordSize > tail.size())
        return {};
    qint64 length = number<quint32>(tail.constData() + end + 12);
    offset = number<quint32>(tail.constData() + end + 16);
    if (end >= LocatorSize && tail.mid(end - LocatorSize, 4) == "PK\x06\x07") {
        const qint64 large = number<qint64>(tail.constData() + end - LocatorSize + 8);
        const QByteArray record = large >= 0 ? bytesAt(large, LargeEndRecordSize) : QByteArray();
        if (record.startsWith("PK\x06\x06")) {
            length = number<qint64>(record.constData() + 40);
            offset = number<qint64>(record.constData() + 48);
        }
    }
    if (length <= 0 || length > LargestDirectory || offset < 0 || offset > size - length)
        return {};
    return bytesAt(offset, length);
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

struct Entry {
    qint64 position; // in the directory
    qint64 header; // its own header
    QByteArray name;
    bool isUnix;
};

class Scan {
public:
    Scan(const ZipDirectory::Source &bytesAt, qint64 size)
        : _bytesAt(bytesAt)
        , _size(size)
    {
    }
    ZipDirectory directory();

private:
    // The field at a position of the file gets a number that nobody knows.
    bool hideBrokenName(qint64 position, const QByteArray &extra);
    void maskBackslashes(const std::vector<Entry> &entries);

    const ZipDirectory::Source &_bytesAt;
    const qint64 _size;
    ZipDirectory _found;
};

ZipDirectory Scan::directory()
{
    qint64 offset = 0;
    const QByteArray directory = directoryOf(_bytesAt, _size, offset);
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
            _found.changes.push_back({ offset + at + 9, char(~Utf8Mark), 0 });
            _found.changes.push_back({ header + 7, char(~Utf8Mark), 0 });
        }
        if (hideBrokenName(offset + at + EntrySize + name,
                           directory.mid(at + EntrySize + name, extra))) {
            const QByteArray own = _bytesAt(header, HeaderSize);
            const qint64 end =
                own.isEmpty() ? 0 : header + HeaderSize + number<quint16>(own.constData() + 26);
            if (end > 0)
                hideBrokenName(end, _bytesAt(end, number<quint16>(own.constData() + 28)));
        }
        entries.push_back(
            { offset + at, header, QByteArray(entry + EntrySize, name), entry[5] == MadeByUnix });
        at += EntrySize + name + extra + comment;
    }
    maskBackslashes(entries);
    std::ranges::sort(_found.changes, {}, &ZipDirectory::Change::position);
    return _found;
}

bool Scan::hideBrokenName(qint64 position, const QByteArray &extra)
{
    constexpr qint64 BeforeName = 9; // bytes: id, length, version, checksum
    for (qint64 at = 0; at + 4 <= extra.size();) {
        const qint64 end = at + 4 + number<quint16>(extra.constData() + at + 2);
        if (number<quint16>(extra.constData() + at) == 0x7075 && end <= extra.size()) {
            const QByteArray name = extra.mid(at + BeforeName, end - at - BeforeName);
            if (!name.isEmpty() && QUtf8StringView(name).isValidUtf8())
                return false;
            _found.changes.push_back({ position + at, 0, 0 });
            return true;
        }
        at = end;
    }
    return false;
}

void Scan::maskBackslashes(const std::vector<Entry> &entries)
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
        _found.maskedNames.insert(masked, entry.name);
        for (qsizetype at = entry.name.indexOf('\\'); at >= 0;
             at = entry.name.indexOf('\\', at + 1)) {
            _found.changes.push_back({ entry.position + EntrySize + at, 0, mask });
            _found.changes.push_back({ entry.header + HeaderSize + at, 0, mask });
        }
    }
}

} // namespace

ZipDirectory ZipDirectory::of(const Source &bytesAt, qint64 size)
{
    return Scan(bytesAt, size).directory();
}
