#pragma once

#include <QObject>

class MainModel;
class OpenDialogs;
class PathNavigators;
class Workspace;

// A pane that shows the mounted volumes is listed again when one comes or goes. Main thread.
class VolumeReload final : public QObject {
    Q_OBJECT

public:
    VolumeReload(const MainModel &mainModel, const PathNavigators &navigators,
                 const Workspace &workspace, OpenDialogs &openDialogs);

    void volumeDidMount() { volumesDidChange(); }
    void volumeDidUnmount() { volumesDidChange(); }

private:
    void volumesDidChange();
    void reloadFileListsForVolumes();

    const MainModel &mainModel;
    const PathNavigators &navigators;
    const Workspace &workspace;
    OpenDialogs &openDialogs;
};
