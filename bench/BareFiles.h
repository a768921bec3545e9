#pragma once

#include "bench/RunProgram.h"
#include "files/Descriptor.h"

#include <QByteArray>
#include <QByteArrayList>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <linux/magic.h>
#include <string>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

// The least that a careful program has to do for the same: bare loops of system calls over the
// names of a folder. They end the benchmark when a call fails.
namespace BareFiles {

inline void demand(bool good, const char *what)
{
    if (good)
        return;
    std::perror(what);
    std::exit(1);
}

inline Descriptor folder(const QByteArray &path)
{
    Descriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    demand(opened.isOpen(), path.constData());
    return opened;
}

// Each file under a name of its own first, with mode and times, then renamed.
inline void copy(const QByteArray &from, const QByteArray &to, const QByteArrayList &names)
{
    const Descriptor source = folder(from);
    const Descriptor target = folder(to);
    int number = 0;
    for (const QByteArray &name : names) {
        const QByteArray staged = ".bare-" + QByteArray::number(++number);
        const Descriptor in(::openat(source.number(), name, O_RDONLY | O_CLOEXEC));
        const Descriptor out(
            ::openat(target.number(), staged, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        struct stat status { };
        demand(::fstat(in.number(), &status) == 0, "fstat");
        for (off_t left = status.st_size; left > 0;) {
            const ssize_t copied =
                ::copy_file_range(in.number(), nullptr, out.number(), nullptr, size_t(left), 0);
            demand(copied > 0, "copy_file_range");
            left -= copied;
        }
        const timespec times[2] = { status.st_atim, status.st_mtim };
        demand(::fchmod(out.number(), status.st_mode & 07777) == 0, "fchmod");
        demand(::futimens(out.number(), times) == 0, "futimens");
        demand(::renameat(target.number(), staged, target.number(), name) == 0, "renameat");
    }
}

inline void move(const QByteArray &from, const QByteArray &to, const QByteArrayList &names)
{
    const Descriptor source = folder(from);
    const Descriptor target = folder(to);
    for (const QByteArray &name : names)
        demand(::renameat(source.number(), name, target.number(), name) == 0, "renameat");
}

// What the disk of a folder is called, for the line of a figure.
inline std::string fileSystem(const QByteArray &path)
{
    struct statfs status { };
    demand(::statfs(path.constData(), &status) == 0, "statfs");
    switch (status.f_type) {
    case EXT4_SUPER_MAGIC:
        return "ext4";
    case TMPFS_MAGIC:
        return "tmpfs";
    case BTRFS_SUPER_MAGIC:
        return "btrfs";
    case XFS_SUPER_MAGIC:
        return "xfs";
    case OVERLAYFS_SUPER_MAGIC:
        return "overlayfs";
    default:
        return "another file system";
    }
}

} // namespace BareFiles
