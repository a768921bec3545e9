#include "files/FolderMark.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/vfs.h>

using namespace Qt::StringLiterals;

namespace {

QString systemMark(int folder)
{
    struct statfs status { };
    if (::fstatfs(folder, &status) != 0)
        return {};
    quint64 id = 0;
    static_assert(sizeof status.f_fsid == sizeof id);
    std::memcpy(&id, &status.f_fsid, sizeof id);
    return QString::number(id, 16);
}

} // namespace

QString folderMark(int folder)
{
    const auto status = statusOf(folder);
    return status ? systemMark(folder) + u'.' + QString::number(status->identity.inode) + u'.'
            + QString::number(status->created.value_or(0))
                  : QString();
}

QString fileSystemMark(const QString &path)
{
    for (QString at = path;; at = PathText::parent(at)) {
        const Descriptor folder(::open(FileName::toBytes(at), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (folder.isOpen())
            return systemMark(folder.number());
        if (at == u"/" || at.isEmpty())
            return {};
    }
}

bool keepsInodes(int folder)
{
    struct statfs status { };
    if (::fstatfs(folder, &status) != 0)
        return true;
    constexpr quint32 madeUp[] = {
        MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, FUSE_SUPER_MAGIC,
        SMB_SUPER_MAGIC,   CIFS_SUPER_MAGIC,  SMB2_SUPER_MAGIC,
    };
    return std::find(std::begin(madeUp), std::end(madeUp), quint32(status.f_type))
        == std::end(madeUp);
}

bool foldsNames(int folder)
{
    struct statfs status { };
    if (::fstatfs(folder, &status) != 0)
        return false;
    constexpr quint32 Hfs = 0x4244;
    constexpr quint32 HfsPlus = 0x482B;
    constexpr quint32 Ntfs = 0x5346544E;
    constexpr quint32 Ntfs3 = 0x7366746E;
    constexpr quint32 folding[] = {
        MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, Hfs, HfsPlus, Ntfs, Ntfs3
    };
    if (std::find(std::begin(folding), std::end(folding), quint32(status.f_type))
        != std::end(folding))
        return true;
    int flags = 0; // some folders of other file systems
    return ::ioctl(folder, FS_IOC_GETFLAGS, &flags) == 0 && flags & FS_CASEFOLD_FL;
}
