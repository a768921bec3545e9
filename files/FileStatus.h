#pragma once

#include <QHashFunctions>
#include <QString>

#include <optional>

#include <sys/types.h>

// Whether a symbolic link stands for itself or for its target.
enum class Links { NoFollow, Follow };

enum class FileKind : quint8 { Regular, Directory, Symlink, Fifo, Socket, CharDevice, BlockDevice };

// One and the same file or folder, whatever its path: the device and inode number.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
    friend size_t qHash(const FileIdentity &identity, size_t seed = 0)
    {
        return qHashMulti(seed, identity.device, identity.inode);
    }
};

struct FileStatus {
    FileKind kind = FileKind::Regular;
    mode_t mode = 0; // permission, set-id and sticky bits
    qint64 size = 0; // bytes
    qint64 modified = 0; // nanoseconds since 1970
    qint64 changed = 0; // nanoseconds since 1970: the content, or anything of this
    std::optional<qint64> created; // nanoseconds since 1970; absent where the file system has none
    FileIdentity identity;
    quint64 links = 1;
    uid_t owner = 0;
    gid_t group = 0;
    bool immutable = false; // FS_IMMUTABLE_FL
    bool mountPoint = false; // STATX_ATTR_MOUNT_ROOT
};

// The status of a path, or nothing when there is none (missing, no rights, dangling link when
// followed); errno tells why. Any thread.
std::optional<FileStatus> fileStatus(const QString &path, Links links);

// The status of an open file or folder.
std::optional<FileStatus> statusOf(int descriptor);

// Whether there is something, and it is a folder.
bool isFolder(const std::optional<FileStatus> &status);

// Whether an item is still the one it was, with the same content as far as a status tells.
bool isUnchanged(const FileStatus &before, const FileStatus &now);

// Whether something stands at the path itself; a dangling link does.
bool exists(const QString &path);

// The target text of a symbolic link, unresolved.
std::optional<QString> linkTarget(const QString &path);
