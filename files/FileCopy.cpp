#include "files/FileCopy.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/SystemCalls.h"

#include <QByteArray>
#include <QVarLengthArray>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <linux/magic.h>
#include <memory>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr off_t Step = 16 * 1024 * 1024; // bytes in one call, so that the count moves
constexpr size_t BufferSize = 256 * 1024; // bytes
constexpr off_t ToTheEnd = std::numeric_limits<off_t>::max();
constexpr const char *AccessList = "system.posix_acl_access";

using SystemCalls::errorOf;

class Content {
public:
    Content(int source, int target, std::atomic<qint64> *done)
        : _source(source)
        , _target(target)
        , _done(done)
    {
    }

    // Copies what lies from one offset to another, or to the end of the source if that comes first.
    std::error_code range(off_t from, off_t to)
    {
        while (from < to) {
            const off_t before = from;
            const size_t size = size_t(std::min(Step, to - from));
            const ssize_t copied = _byHand ? copyByHand(from, size) : copyInKernel(from, size);
            if (copied < 0)
                return errorOf(copied);
            // Some files say 0 bytes here and hold some: what can be read decides.
            if (copied == 0 && (_byHand || before > 0))
                return {};
            if (copied == 0)
                _byHand = true;
            from = before + copied;
            if (_done)
                *_done += copied;
        }
        return {};
    }

private:
    ssize_t copyInKernel(off_t at, size_t size)
    {
        off_t from = at;
        off_t to = at;
        for (;;) {
            const ssize_t copied = SystemCalls::copy_file_range(_source, &from, _target, &to, size);
            if (copied >= 0)
                return copied;
            if (errno == EINTR)
                continue;
            // A full disk stays full; whatever else the kernel has against it may work by hand.
            if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG || errno == EIO)
                return -1;
            _byHand = true;
            return copyByHand(at, size);
        }
    }

    ssize_t copyByHand(off_t at, size_t size)
    {
        if (!_buffer)
            _buffer = std::make_unique_for_overwrite<char[]>(BufferSize);
        ssize_t got = 0;
        do
            got = ::pread(_source, _buffer.get(), std::min(size, BufferSize), at);
        while (got < 0 && errno == EINTR);
        for (ssize_t put = 0; put < got;) {
            const ssize_t written =
                SystemCalls::pwrite(_target, _buffer.get() + put, size_t(got - put), at + put);
            if (written < 0 && errno != EINTR)
                return -1;
            put += std::max<ssize_t>(written, 0);
        }
        return got;
    }

    int _source;
    int _target;
    std::atomic<qint64> *_done;
    bool _byHand = false;
    std::unique_ptr<char[]> _buffer;
};

std::error_code copyWithHoles(Content &content, int source, int target)
{
    off_t at = 0;
    for (;;) {
        const off_t data = ::lseek(source, at, SEEK_DATA);
        if (data < 0 && errno == ENXIO)
            break; // a hole up to the end
        const off_t hole = data < 0 ? -1 : ::lseek(source, data, SEEK_HOLE);
        if (hole < 0) // no such thing here
            return content.range(at, ToTheEnd);
        if (const auto failed = content.range(data, hole))
            return failed;
        at = hole;
    }
    struct stat now { }; // it may have become shorter
    struct stat made { };
    if (const auto failed = errorOf(::fstat(source, &now) | ::fstat(target, &made)))
        return failed;
    return made.st_size < now.st_size ? errorOf(::ftruncate(target, now.st_size))
                                      : std::error_code();
}

// Also of what its owner may not write to.
std::error_code setAttribute(int target, const char *name, const char *value, size_t size)
{
    auto failed = errorOf(SystemCalls::fsetxattr(target, name, value, size));
    struct stat status { };
    if (failed != std::errc::permission_denied || ::fstat(target, &status) != 0
        || ::fchmod(target, (status.st_mode & 07777) | S_IWUSR) != 0)
        return failed;
    failed = errorOf(SystemCalls::fsetxattr(target, name, value, size));
    const auto back = errorOf(::fchmod(target, status.st_mode & 07777));
    return failed ? failed : back;
}

std::error_code copyAttribute(int source, int target, const char *name)
{
    QVarLengthArray<char, 1024> value(1024);
    ssize_t size = ::fgetxattr(source, name, value.data(), size_t(value.size()));
    if (size < 0 && errno == ERANGE) {
        value.resize(65536); // the kernel's own limit
        size = ::fgetxattr(source, name, value.data(), size_t(value.size()));
    }
    if (size < 0) // taken away meanwhile
        return errno == ENODATA ? std::error_code() : errorOf(size);
    return setAttribute(target, name, value.data(), size_t(size));
}

bool isUnsupported(const std::error_code &failed)
{
    return failed == std::errc::not_supported || failed == std::errc::operation_not_permitted;
}

std::error_code copyAttributes(int source, int target, bool removesList, std::error_code &lost)
{
    QVarLengthArray<char, 1024> names(1024);
    ssize_t length = ::flistxattr(source, names.data(), size_t(names.size()));
    if (length < 0 && errno == ERANGE) {
        names.resize(65536);
        length = ::flistxattr(source, names.data(), size_t(names.size()));
    }
    if (const auto failed = errorOf(length); !isUnsupported(failed))
        lost = failed;
    for (ssize_t at = 0; at < length;) {
        const QByteArrayView name(names.constData() + at);
        at += name.size() + 1;
        removesList = removesList && name != AccessList;
        if (name != AccessList && !name.startsWith("user."))
            continue;
        const auto failed = copyAttribute(source, target, name.data());
        if (!failed || isUnsupported(failed))
            continue;
        if (name == AccessList)
            return failed;
        lost = failed;
    }
    if (removesList)
        ::fremovexattr(target, AccessList);
    return {};
}

} // namespace

std::error_code FileCopy::copyContent(int source, const struct stat &status, int target,
                                      std::atomic<qint64> *done)
{
    if (status.st_size > 0 && SystemCalls::clone(target, source) == 0) {
        if (done)
            *done += status.st_size;
        return {};
    }
    Content content(source, target, done);
    if (off_t(status.st_blocks) * 512 < status.st_size)
        return copyWithHoles(content, source, target);
    return content.range(0, ToTheEnd);
}

std::error_code FileCopy::copyProperties(int source, const struct stat &status, int target,
                                         bool removesList, std::error_code &lost)
{
    struct stat made { };
    if (const auto failed = errorOf(::fstat(target, &made)))
        return failed;
    mode_t mode = status.st_mode & 07777;
    if (made.st_uid != status.st_uid || made.st_gid != status.st_gid) {
        if (SystemCalls::fchown(target, status.st_uid, status.st_gid) != 0) {
            SystemCalls::fchown(target, uid_t(-1), status.st_gid);
            mode &= 0777; // for somebody else it would be another permission
        }
    }
    // While the file may still be written to by its owner.
    if (const auto failed = copyAttributes(source, target, removesList, lost))
        return failed;
    if (const auto failed = errorOf(SystemCalls::fchmod(target, mode));
        failed && !isUnsupported(failed))
        return failed;
    const timespec times[2] = { status.st_atim, status.st_mtim };
    const auto failed = errorOf(SystemCalls::futimens(target, times));
    if (!isUnsupported(failed))
        return failed;
    lost = failed;
    return {};
}

std::error_code FileCopy::copyUserAttributes(const QString &source, const QString &target)
{
    const auto opened = [](const QString &path) {
        return Descriptor(
            SystemCalls::openat(AT_FDCWD, FileName::toBytes(path),
                                O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    };
    const Descriptor from = opened(source);
    const Descriptor to = opened(target);
    if (!from.isOpen() || !to.isOpen())
        return errorOf(-1);
    std::error_code lost;
    const auto failed = copyAttributes(from.number(), to.number(), false, lost);
    return failed ? failed : lost;
}

std::error_code FileCopy::finish(int target, bool toDevice)
{
    const auto failed = errorOf(SystemCalls::flush(target));
    return !failed && toDevice ? errorOf(SystemCalls::fsync(target)) : failed;
}

bool FileCopy::isFlushedByFile(int folder)
{
    struct statfs status { };
    return ::fstatfs(folder, &status) == 0 && status.f_type == FUSE_SUPER_MAGIC;
}

bool FileCopy::handsOnAccessList(int folder)
{
    return ::fgetxattr(folder, "system.posix_acl_default", nullptr, 0) > 0;
}
