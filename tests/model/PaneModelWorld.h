#pragma once

#include "model/FileQueries.h"
#include "model/ItemInformation.h"
#include "model/Launching.h"
#include "model/MainModel.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestTree.h"
#include "widgets/FileKinds.h"

struct RecordedInformation final : ItemInformation {
    void showInfoSheet(const OperationRequest &request) override { requests.append(request); }
    QList<OperationRequest> requests;
};

// The pane model alone, over real folders, in a window without widgets whose tables and path
// controls follow it. Left shows "left", right shows "right", names upward.
struct PaneModelWorld {
    TestFolder folder;
    TestFolder settings;
    QString left = folder.path(QStringLiteral("left"));
    UserDefaults defaults { settings.path(QStringLiteral("settings.plist")) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    Waiting waiting;
    FileQueries queries { workspace, kinds, waiting };
    Launching launching { workspace, alerts, waiting };
    MainModel model { bus, defaults, alerts, queries, launching, kinds, waiting };
    PaneWindowStub window;
    RecordedDesk desk;
    RecordedInformation information;
    QList<FolderChange> changes;
    QList<Side> refreshed;

    PaneModelWorld()
    {
        makeTree(folder,
                 QStringLiteral("left/sub/deep/, left/Program.app/Contents/, left/Setup.pkg/, "
                                "right/, left/a=a, left/b=b, left/c=c, left/to sub->sub"));
        defaults.setValue(Settings::LeftFileListSortingDirection, true);
        defaults.setValue(Settings::RightFileListSortingDirection, true);
        defaults.setValue(Settings::LeftFileListLastPath, left);
        defaults.setValue(Settings::RightFileListLastPath, folder.path(QStringLiteral("right")));
        model.setWindowController(&window);
        model.setTwinleaf(&desk);
        model.setInfoSheetController(&information);
        QObject::connect(&model, &MainModel::rowsChanged, &model, [this](Side side) {
            window.tables[side].rows = int(model.rows(side).size());
        });
        bus.subscribe(DirectoryChanged, this, &PaneModelWorld::follow);
        bus.subscribe(TableViewSelectionDidChange, this, &PaneModelWorld::noteRefresh);
    }
    void follow(Side side, const FolderChange &change)
    {
        changes.append(change);
        window.paths[side] = change.path;
    }
    void noteRefresh(const PaneOfMessage &pane) { refreshed.append(pane.side); }
    void list(const QString &path, const std::optional<QString> &item = {})
    {
        bus.post(DirectoryChanged.left, { .path = path, .item = item });
    }
    void open(const RowSet &rows) { bus.post(GetRows.left, { rows, model.rowsLeft() }); }
    void open(const QString &name) { open(RowSet { row(name) }); }
    int row(const QString &name, Side side = Side::Left) const
    {
        return int(model.rows(side).rowOfName(name));
    }
    QString shown(Side side = Side::Left) const { return model.rows(side).folder(); }
};

// As it is after the start.
struct StartedWorld : PaneModelWorld {
    StartedWorld() { model.awakeFromNib(); }
};
