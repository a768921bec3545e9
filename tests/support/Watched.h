#pragma once

#include "files/SystemCalls.h"

#include <cerrno>
#include <fcntl.h>

using SystemCalls::Call;

// Sees each system call that changes files, as long as it lives, and may make it fail.
class Watched final {
public:
    explicit Watched(SystemCalls::Watch watch) { SystemCalls::setWatch(std::move(watch)); }
    ~Watched() { SystemCalls::setWatch({}); }
    Watched(const Watched &) = delete;
    Watched &operator=(const Watched &) = delete;
};

// What a file system answers that knows nothing beyond plain files and folders, as FAT does.
inline int answerOfPlainFileSystem(Call call, unsigned flags)
{
    switch (call) {
    case Call::Rename:
        return flags ? EINVAL : 0;
    case Call::Link:
        return EPERM;
    case Call::Open:
        return (flags & O_TMPFILE) == O_TMPFILE ? EOPNOTSUPP : 0;
    case Call::SetAttribute:
    case Call::Clone:
        return EOPNOTSUPP;
    default:
        return 0;
    }
}
