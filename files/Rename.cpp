#include "files/Rename.h"

#include "files/Descriptor.h"
#include "files/SystemCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>

namespace {

using SystemCalls::errorOf;

// A folder that nobody may write to cannot change its parent; for the moment of the renaming its
// owner may.
class WritableFolder {
public:
    WritableFolder(int folder, const char *name)
        : _folder(::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC))
    {
        struct stat status { };
        if (!_folder.isOpen() || ::fstat(_folder.number(), &status) != 0
            || (status.st_mode & S_IWUSR))
            return;
        _mode = status.st_mode & 07777;
        _changed = SystemCalls::fchmod(_folder.number(), _mode | S_IWUSR) == 0;
    }
    ~WritableFolder()
    {
        if (_changed)
            SystemCalls::fchmod(_folder.number(), _mode);
    }
    WritableFolder(const WritableFolder &) = delete;
    WritableFolder &operator=(const WritableFolder &) = delete;
    bool changed() const { return _changed; }

private:
    Descriptor _folder;
    mode_t _mode = 0;
    bool _changed = false;
};

std::error_code rename(int fromFolder, const char *from, int toFolder, const char *to,
                       unsigned flags)
{
    const auto attempt = [&] {
        return errorOf(SystemCalls::renameat2(fromFolder, from, toFolder, to, flags));
    };
    const auto failed = attempt();
    if (failed != std::errc::permission_denied || fromFolder == toFolder)
        return failed;
    const WritableFolder first(fromFolder, from);
    if (!(flags & RENAME_EXCHANGE))
        return first.changed() ? attempt() : failed;
    const WritableFolder second(toFolder, to);
    return first.changed() || second.changed() ? attempt() : failed;
}

// For a file system without RENAME_NOREPLACE (some network and FUSE ones, FAT under some kernels).
std::error_code renameChecked(int fromFolder, const char *from, int toFolder, const char *to)
{
    struct statx status;
    const auto look = [&status](int folder, const char *name) {
        return errorOf(SystemCalls::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
                                          STATX_TYPE, &status));
    };
    if (const auto failed = look(fromFolder, from))
        return failed;
    if (S_ISREG(status.stx_mode)) {
        // A link cannot replace anything, however late something appears at the name.
        if (SystemCalls::linkat(fromFolder, from, toFolder, to, 0) == 0)
            return errorOf(SystemCalls::unlinkat(fromFolder, from, 0));
        if (errno == EEXIST)
            return errorOf(-1);
    }
    const auto standing = look(toFolder, to);
    if (!standing)
        return std::make_error_code(std::errc::file_exists);
    if (standing != std::errc::no_such_file_or_directory)
        return standing;
    return rename(fromFolder, from, toFolder, to, 0);
}

} // namespace

bool Rename::isUnsupported(const std::error_code &failed)
{
    return failed == std::errc::invalid_argument || failed == std::errc::function_not_supported
        || failed == std::errc::operation_not_supported;
}

std::error_code Rename::noReplace(int fromFolder, const char *from, int toFolder, const char *to)
{
    const auto failed = rename(fromFolder, from, toFolder, to, RENAME_NOREPLACE);
    // A folder into itself is invalid, too: the plain rename says so again.
    return isUnsupported(failed) ? renameChecked(fromFolder, from, toFolder, to) : failed;
}

std::error_code Rename::exchange(int folder, const char *name, int otherFolder, const char *other)
{
    const auto failed = rename(folder, name, otherFolder, other, RENAME_EXCHANGE);
    return isUnsupported(failed) ? std::make_error_code(std::errc::not_supported) : failed;
}
