#include "unpack/ZipFile.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t BlockSize = 128 * 1024; // bytes

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

} // namespace

bool ZipFile::open(archive *reader, const QByteArray &path)
{
    struct stat status;
    _opened = Descriptor(::open(path, O_RDONLY | O_CLOEXEC));
    if (!_opened.isOpen() || fstat(_opened.number(), &status) != 0)
        return false;
    _size = status.st_size;
    _block.resize(BlockSize);
    _directory = ZipDirectory::of(
        [this](qint64 offset, qint64 count) { return bytesAt(_opened.number(), offset, count); },
        _size);
    archive_read_set_callback_data(reader, this);
    archive_read_set_read_callback(reader, &ZipFile::read);
    archive_read_set_seek_callback(reader, &ZipFile::seek);
    return archive_read_open1(reader) == ARCHIVE_OK;
}

la_ssize_t ZipFile::read(archive *reader, void *object, const void **bytes)
{
    auto *self = static_cast<ZipFile *>(object);
    ssize_t count = 0;
    do
        count = pread(self->_opened.number(), self->_block.data(), self->_block.size(),
                      self->_position);
    while (count < 0 && errno == EINTR);
    if (count < 0) {
        archive_set_error(reader, errno, "%s", "The archive cannot be read");
        return -1;
    }
    const auto &changes = self->_directory.changes;
    auto change =
        std::ranges::lower_bound(changes, self->_position, {}, &ZipDirectory::Change::position);
    for (; change != changes.end() && change->position < self->_position + count; ++change) {
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
