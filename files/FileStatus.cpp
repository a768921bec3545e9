#include "files/FileStatus.h"

#include "files/FileName.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

FileKind kindOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return FileKind::Directory;
    case S_IFLNK:
        return FileKind::Symlink;
    case S_IFIFO:
        return FileKind::Fifo;
    case S_IFSOCK:
        return FileKind::Socket;
    case S_IFCHR:
        return FileKind::CharDevice;
    case S_IFBLK:
        return FileKind::BlockDevice;
    default:
        return FileKind::Regular;
    }
}

qint64 nanoseconds(const statx_timestamp &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

std::optional<FileStatus> statusBy(int folder, const char *name, int flags)
{
    struct statx raw;
    if (SystemCalls::statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME, &raw) != 0)
        return std::nullopt;
    FileStatus status;
    status.kind = kindOf(raw.stx_mode);
    status.mode = raw.stx_mode & 07777;
    status.size = qint64(raw.stx_size);
    status.modified = nanoseconds(raw.stx_mtime);
    status.changed = nanoseconds(raw.stx_ctime);
    if (raw.stx_mask & STATX_BTIME)
        status.created = nanoseconds(raw.stx_btime);
    status.identity = { makedev(raw.stx_dev_major, raw.stx_dev_minor), raw.stx_ino };
    status.links = raw.stx_nlink;
    status.owner = raw.stx_uid;
    status.group = raw.stx_gid;
    status.immutable = raw.stx_attributes & STATX_ATTR_IMMUTABLE;
    status.mountPoint = raw.stx_attributes & STATX_ATTR_MOUNT_ROOT;
    return status;
}

} // namespace

std::optional<FileStatus> statxStatus(int folder, const char *name, Links links)
{
    return statusBy(folder, name,
                    AT_NO_AUTOMOUNT | (links == Links::NoFollow ? AT_SYMLINK_NOFOLLOW : 0));
}

std::optional<FileStatus> statusOf(int descriptor)
{
    return statusBy(descriptor, "", AT_EMPTY_PATH);
}

bool isFolder(const std::optional<FileStatus> &status)
{
    return status && status->kind == FileKind::Directory;
}

bool isUnchanged(const FileStatus &before, const FileStatus &now)
{
    return before.identity == now.identity && before.kind == now.kind && before.size == now.size
        && before.modified == now.modified;
}

std::optional<FileStatus> fileStatus(const QString &path, Links links)
{
    return statxStatus(AT_FDCWD, FileName::toBytes(path).constData(), links);
}

bool exists(const QString &path)
{
    struct statx status;
    return SystemCalls::statx(AT_FDCWD, FileName::toBytes(path).constData(),
                              AT_NO_AUTOMOUNT | AT_SYMLINK_NOFOLLOW, STATX_TYPE, &status)
        == 0;
}

std::optional<QString> linkTarget(const QString &path)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlink(FileName::toBytes(path).constData(), target, sizeof target);
    if (length < 0)
        return std::nullopt;
    return FileName::fromBytes(QByteArrayView(target, length));
}
