#include "operations/SyncRemovable.h"

#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/MountTable.h"
#include "platform/Alerts.h"

#include <climits>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

bool isRemovable(const QString &folder)
{
    char resolved[PATH_MAX]; // a link may lead there
    const char *path = ::realpath(FileName::toBytes(folder).constData(), resolved);
    const MountTable table = MountTable::current();
    const Mount *mount = table.mountOf(path ? FileName::fromBytes(path) : folder);
    return mount
        && (!table.isLocal(*mount) || mount->point.startsWith(u"/media/"_s)
            || mount->point.startsWith(u"/run/media/"_s) || mount->point.startsWith(u"/mnt/"_s));
}

} // namespace

std::optional<Alert> syncIfRemovable(const QString &folder)
{
    const auto failed = isRemovable(folder) ? FileSystem::sync(folder) : std::error_code();
    if (!failed)
        return std::nullopt;
    return Alert::failure(localized("Not everything could be written to the disk."),
                          FileName::shown(folder) + u": "_s
                              + QString::fromStdString(failed.message()));
}
