#include "operations/SyncRemovable.h"

#include "files/FileSystem.h"
#include "files/MountTable.h"

using namespace Qt::StringLiterals;

void syncIfRemovable(const QString &folder)
{
    const MountTable table = MountTable::current();
    const Mount *mount = table.mountOf(folder);
    if (mount
        && (!table.isLocal(*mount) || mount->point.startsWith(u"/media/"_s)
            || mount->point.startsWith(u"/run/media/"_s) || mount->point.startsWith(u"/mnt/"_s)))
        FileSystem::sync(folder);
}
