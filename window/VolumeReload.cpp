#include "window/VolumeReload.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/PathText.h"
#include "model/MainModel.h"
#include "platform/OpenDialogs.h"
#include "platform/Workspace.h"
#include "window/PathNavigators.h"

VolumeReload::VolumeReload(const MainModel &model, const PathNavigators &pathNavigators,
                           const Workspace &desktop, OpenDialogs &dialogs)
    : mainModel(model)
    , navigators(pathNavigators)
    , workspace(desktop)
    , openDialogs(dialogs)
{
}

void VolumeReload::volumesDidChange()
{
    Arrivals::deliver(this, [this] { reloadFileListsForVolumes(); });
}

void VolumeReload::reloadFileListsForVolumes()
{
    if (openDialogs.anyOpen()) {
        connect(&openDialogs, &OpenDialogs::allClosed, this, &VolumeReload::volumesDidChange,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection
                                   | Qt::UniqueConnection));
        return;
    }
    // The segment under which the desktop mounts volumes; a pane elsewhere has nothing to show.
    const int segment = int(PathText::components(workspace.volumesFolder()).size()) - 1;
    for (const Side side : { Side::Left, Side::Right })
        if (navigators.control(side).label(segment) == localized("Volumes"))
            mainModel.showFolder(side, { .path = mainModel.folder(side) });
}
