#include "reader/FileBytes.h"

#include <algorithm>
#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <utility>

FileBytes::FileBytes(Descriptor file)
    : _file(std::move(file))
{
    struct stat status { };
    _isRegular = fstat(_file.number(), &status) == 0 && S_ISREG(status.st_mode);
    _size = _isRegular ? status.st_size : 0;
}

FileBytes::~FileBytes()
{
    if (_map)
        munmap(_map, size_t(_size));
}

QByteArray FileBytes::read(qint64 at, qint64 count) const
{
    QByteArray bytes(std::clamp<qint64>(_size - at, 0, count), Qt::Uninitialized);
    qint64 have = 0;
    while (have < bytes.size()) {
        const ssize_t come =
            pread(_file.number(), bytes.data() + have, size_t(bytes.size() - have), at + have);
        if (come < 0 && errno == EINTR)
            continue;
        if (come <= 0)
            break;
        have += come;
    }
    bytes.truncate(have);
    return bytes;
}

QByteArrayView FileBytes::mapped()
{
    if (!_map && _size > 0 && _size <= MapLimit) {
        void *const map = mmap(nullptr, size_t(_size), PROT_READ, MAP_PRIVATE, _file.number(), 0);
        _map = map == MAP_FAILED ? nullptr : map;
    }
    return _map ? QByteArrayView(static_cast<const char *>(_map), _size) : QByteArrayView();
}
