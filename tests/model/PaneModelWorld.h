#pragma once

#include "model/ItemInformation.h"
#include "model/MainModel.h"
#include "platform/FileKinds.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SettingsKeys.h"

struct RecordedInformation final : ItemInformation {
    void showInfoSheet(const OperationRequest &request) override { requests.append(request); }
    QList<OperationRequest> requests;
};

// The pane model over real folders, in a window without widgets whose path controls follow it.
// Left shows "left", right shows "right".
struct PaneModelWorld {
    explicit PaneModelWorld(bool confirms = false)
    {
        folder.makeFolder(QStringLiteral("left/sub/deep"));
        folder.makeFolder(QStringLiteral("left/Program.app/Contents"));
        folder.makeFolder(QStringLiteral("left/Setup.pkg"));
        folder.makeFolder(QStringLiteral("right"));
        folder.write(QStringLiteral("left/a"), "a");
        folder.write(QStringLiteral("left/b"), "b");
        folder.write(QStringLiteral("left/c"), "c");
        folder.link(QStringLiteral("sub"), QStringLiteral("left/to sub"));
        defaults.setValue(Settings::ConfirmationForFileOperations, confirms);
        for (const auto key :
             { Settings::LeftFileListSortingDirection, Settings::RightFileListSortingDirection })
            defaults.setValue(key, true);
        defaults.setValue(Settings::LeftFileListLastPath, folder.path(QStringLiteral("left")));
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

    int row(const QString &name) const { return int(model.rowsLeft().rowOfName(name)); }
    QStringList names(Side side = Side::Left) const
    {
        QStringList names;
        for (qsizetype row = 0; row < model.rows(side).size(); ++row)
            names.append(model.rows(side)[row].name());
        return names;
    }
    QString shown(Side side = Side::Left) const { return model.rows(side).folder(); }
    void open(const RowSet &rows) { bus.post(GetRows.left, { rows, model.rowsLeft() }); }
    void open(const QString &name) { open(RowSet { row(name) }); }
    ItemRequest request(const RowSet &rows) const
    {
        return { .side = Side::Left, .item = rows, .seen = model.rowsLeft() };
    }
    ItemRequest request(const QString &name) const { return request(RowSet { row(name) }); }
    void showEverywhere(const QString &path)
    {
        for (const Side side : { Side::Left, Side::Right })
            bus.post(DirectoryChanged[side], { .path = path });
    }

    TestFolder folder;
    UserDefaults defaults { folder.path(QStringLiteral("settings.plist")) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    RecordedDesk desk;
    RecordedInformation information;
    QList<FolderChange> changes;
    QList<Side> refreshed;
};
