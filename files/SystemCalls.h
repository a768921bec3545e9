#pragma once

#include <functional>
#include <system_error>

#include <sys/stat.h>
#include <sys/types.h>

// The system calls that changing files rests on, by their own names and with their own answers, so
// that a test can make each of them fail, or have something happen just before it. Any thread.
namespace SystemCalls {

enum class Call {
    Open,
    Status,
    Attributes, // listxattr
    MakeFolder,
    Rename,
    Link,
    Remove,
    Clone,
    CopyRange,
    Write,
    SyncFile,
    SyncAll,
    Flush,
    SetAttribute,
    SetOwner,
    SetMode,
    SetTimes,
};

// Told of each call with the name it is about (nothing for one on a descriptor) and its flags;
// answers the error that the call is to fail with, or 0. Set by tests, while nothing runs.
using Watch = std::function<int(Call call, const char *name, unsigned flags)>;
void setWatch(Watch watch);

int openat(int folder, const char *name, int flags, mode_t mode = 0);
int statx(int folder, const char *name, int flags, unsigned mask, struct statx *status);
ssize_t listxattr(const char *path, char *names, size_t size);
int mkdirat(int folder, const char *name, mode_t mode);
int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags);
int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags);
int unlinkat(int folder, const char *name, int flags);
int clone(int target, int source); // FICLONE of ioctl_ficlonerange(2)
ssize_t copy_file_range(int source, off_t *from, int target, off_t *to, size_t size);
ssize_t pwrite(int target, const void *bytes, size_t size, off_t at);
int fsync(int file);
int syncfs(int file);
int flush(int file); // close(2) of a second descriptor: what a server tells only then
int fsetxattr(int file, const char *name, const void *value, size_t size);
int fchown(int file, uid_t owner, gid_t group);
int fchmod(int file, mode_t mode);
int futimens(int file, const timespec times[2]);

// The error of the call that just answered `result`; none when it is not negative.
std::error_code errorOf(ssize_t result);

} // namespace SystemCalls
