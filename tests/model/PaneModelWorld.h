#pragma once

#include "model/ItemInformation.h"
#include "tests/support/PaneWorld.h"
#include "tests/support/TestTree.h"

struct RecordedInformation final : ItemInformation {
    void showInfoSheet(const OperationRequest &request) override { requests.append(request); }
    QList<OperationRequest> requests;
};

// Whose path controls follow the panes. Left shows "left", right shows "right", names upward.
struct PaneModelWorld : PaneWorld {
    QString left = folder.path(QStringLiteral("left"));
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
        model.setInfoSheetController(&information);
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
};

// As it is after the start.
struct StartedWorld : PaneModelWorld {
    StartedWorld() { model.awakeFromNib(); }
};
