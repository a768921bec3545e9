#include "files/ItemMarks.h"

#include "files/SystemCalls.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

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

// The kernel writes attributes only where the content may be written, which a file that is for
// reading only refuses its owner, too, who may change that at any time: for a moment it is written
// then. With the mode goes a set-id bit of a group that he is not in: such an item stays as it is.
template <typename Change>
std::error_code changed(int item, Change change)
{
    const Place place(item);
    const auto refusal = SystemCalls::errorOf(change(place));
    struct stat status;
    if (refusal.value() != EACCES || ::fstat(item, &status) != 0 || status.st_uid != ::geteuid()
        || (status.st_mode & (S_IWUSR | S_ISGID)))
        return refusal;
    constexpr mode_t AllBits = 07777; // that a mode can be given
    const mode_t mode = status.st_mode & AllBits;
    if (::chmod(place, mode | S_IWUSR) != 0)
        return refusal;
    const auto error = SystemCalls::errorOf(change(place));
    const auto stays = SystemCalls::errorOf(::chmod(place, mode));
    return error ? error : stays;
}

std::error_code set(int item, const char *name, const QByteArray &value)
{
    return changed(item, [&](const char *place) {
        return ::setxattr(place, name, value.constData(), size_t(value.size()), 0);
    });
}

std::error_code remove(int item, const char *name)
{
    return changed(item, [&](const char *place) {
        return ::removexattr(place, name) == 0 || errno == ENODATA ? 0 : -1;
    });
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
    return set(item, name, code);
}

bool isNamed(const char *path, Links links, QByteArrayView name)
{
    constexpr size_t MostNames = 65536; // bytes; the kernel's own limit
    QByteArray names(MostNames, Qt::Uninitialized);
    const ssize_t length = links == Links::Follow ? ::listxattr(path, names.data(), MostNames)
                                                  : ::llistxattr(path, names.data(), MostNames);
    names.truncate(std::max<ssize_t>(length, 0));
    return names.split('\0').contains(name);
}

} // namespace

bool ItemMarks::isMarked(const char *path, Links links)
{
    char first = 0;
    const ssize_t size = links == Links::Follow ? ::getxattr(path, LockName, &first, 1)
                                                : ::lgetxattr(path, LockName, &first, 1);
    if (size >= 0)
        return size > 0 && first != '0';
    // Who may not read the item is told the names of its marks all the same.
    return errno == ERANGE || (errno == EACCES && isNamed(path, links, LockName));
}

ItemMarks::Lock ItemMarks::lockOf(int item)
{
    Lock lock;
    lock.marked = isMarked(Place(item), Links::Follow);
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
    return set(item, LockName, "1");
}

std::error_code ItemMarks::setCodes(int item, const Codes &codes)
{
    if (!canKeepAttributes(item))
        return {};
    if (const auto error = setCode(item, "user.twinleaf.type", codes.type))
        return error;
    return setCode(item, "user.twinleaf.creator", codes.creator);
}
