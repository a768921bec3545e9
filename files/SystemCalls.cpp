#include "files/SystemCalls.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

SystemCalls::Watch watcher; // set while nothing runs

// Whether the call is to be made; else errno says how it failed.
bool lets(SystemCalls::Call call, const char *name = nullptr, unsigned flags = 0)
{
    if (!watcher) [[likely]]
        return true;
    errno = watcher(call, name, flags);
    return errno == 0;
}

} // namespace

void SystemCalls::setWatch(Watch watch)
{
    watcher = std::move(watch);
}

int SystemCalls::openat(int folder, const char *name, int flags, mode_t mode)
{
    return lets(Call::Open, name, unsigned(flags)) ? ::openat(folder, name, flags, mode) : -1;
}

int SystemCalls::statx(int folder, const char *name, int flags, unsigned mask, struct statx *status)
{
    return lets(Call::Status, name, unsigned(flags)) ? ::statx(folder, name, flags, mask, status)
                                                     : -1;
}

ssize_t SystemCalls::listxattr(const char *path, char *names, size_t size)
{
    return lets(Call::Attributes, path) ? ::listxattr(path, names, size) : -1;
}

int SystemCalls::mkdirat(int folder, const char *name, mode_t mode)
{
    return lets(Call::MakeFolder, name) ? ::mkdirat(folder, name, mode) : -1;
}

int SystemCalls::renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                           unsigned flags)
{
    return lets(Call::Rename, to, flags) ? ::renameat2(fromFolder, from, toFolder, to, flags) : -1;
}

int SystemCalls::linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    return lets(Call::Link, to, unsigned(flags)) ? ::linkat(fromFolder, from, toFolder, to, flags)
                                                 : -1;
}

int SystemCalls::unlinkat(int folder, const char *name, int flags)
{
    return lets(Call::Remove, name, unsigned(flags)) ? ::unlinkat(folder, name, flags) : -1;
}

int SystemCalls::clone(int target, int source)
{
    return lets(Call::Clone) ? ::ioctl(target, FICLONE, source) : -1;
}

ssize_t SystemCalls::copy_file_range(int source, off_t *from, int target, off_t *to, size_t size)
{
    return lets(Call::CopyRange) ? ::copy_file_range(source, from, target, to, size, 0) : -1;
}

ssize_t SystemCalls::pwrite(int target, const void *bytes, size_t size, off_t at)
{
    return lets(Call::Write) ? ::pwrite(target, bytes, size, at) : -1;
}

int SystemCalls::fsync(int file)
{
    return lets(Call::SyncFile) ? ::fsync(file) : -1;
}

int SystemCalls::syncfs(int file)
{
    return lets(Call::SyncAll) ? ::syncfs(file) : -1;
}

int SystemCalls::flush(int file)
{
    return lets(Call::Flush) ? ::close(::fcntl(file, F_DUPFD_CLOEXEC, 0)) : -1;
}

int SystemCalls::fsetxattr(int file, const char *name, const void *value, size_t size)
{
    return lets(Call::SetAttribute, name) ? ::fsetxattr(file, name, value, size, 0) : -1;
}

int SystemCalls::fchown(int file, uid_t owner, gid_t group)
{
    return lets(Call::SetOwner) ? ::fchown(file, owner, group) : -1;
}

int SystemCalls::fchmod(int file, mode_t mode)
{
    return lets(Call::SetMode) ? ::fchmod(file, mode) : -1;
}

int SystemCalls::futimens(int file, const timespec times[2])
{
    return lets(Call::SetTimes) ? ::futimens(file, times) : -1;
}

std::error_code SystemCalls::errorOf(ssize_t result)
{
    return result < 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}
