#include "files/FolderMark.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
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
