#include "files/ItemMarks.h"

#include "files/SystemCalls.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

// The calls for attributes refuse a descriptor that is not open for reading; its name in /proc
// leads to the very item, whatever has become of its path.
class Place {
public:
    explicit Place(int item)
    {
        std::snprintf(_text.data(), _text.size(), "/proc/self/fd/%d", item);
    }
    operator const char *() const { return _text.data(); }

private:
    std::array<char, 32> _text {};
};

std::error_code remove(int item, const char *name)
{
    const auto error = SystemCalls::errorOf(::removexattr(Place(item), name));
    return error.value() == ENODATA ? std::error_code() : error;
}

// Other kinds keep no attributes of a person's.
bool canKeepAttributes(int item)
{
    struct stat status;
    return ::fstat(item, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

std::error_code setCode(int item, const char *name, const QByteArray &code)
{
    char old[64];
    const ssize_t size = ::getxattr(Place(item), name, old, sizeof old);
    if (size < 0 && errno == ENOTSUP)
        return {};
    if (size >= 0 && code == QByteArrayView(old, size))
        return {};
    if (code.isEmpty())
        return size < 0 && errno == ENODATA ? std::error_code() : remove(item, name);
    return SystemCalls::errorOf(
        ::setxattr(Place(item), name, code.constData(), size_t(code.size()), 0));
}

} // namespace

bool ItemMarks::meansLocked(ssize_t size, char first)
{
    return size > 0 ? first != '0' : size < 0 && errno == ERANGE;
}

ItemMarks::Lock ItemMarks::lockOf(int item)
{
    Lock lock;
    char first = 0;
    lock.marked = meansLocked(::getxattr(Place(item), LockName, &first, 1), first);
    struct statx status;
    if (SystemCalls::statx(item, "", AT_EMPTY_PATH, STATX_TYPE, &status) == 0) {
        lock.immutable = status.stx_attributes & STATX_ATTR_IMMUTABLE;
        lock.canBeImmutable = (status.stx_attributes_mask & STATX_ATTR_IMMUTABLE)
            && (S_ISREG(status.stx_mode) || S_ISDIR(status.stx_mode));
    }
    return lock;
}

std::error_code ItemMarks::setMarked(int item, bool locked)
{
    if (!locked)
        return remove(item, LockName);
    return SystemCalls::errorOf(::setxattr(Place(item), LockName, "1", 1, 0));
}

std::error_code ItemMarks::setCodes(int item, const Codes &codes)
{
    if (!canKeepAttributes(item))
        return {};
    if (const auto error = setCode(item, "user.twinleaf.type", codes.type))
        return error;
    return setCode(item, "user.twinleaf.creator", codes.creator);
}
