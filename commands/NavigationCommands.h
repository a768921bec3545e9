#pragma once

#include "model/FolderHistory.h"
#include "model/Side.h"

#include <QObject>

#include <optional>

class MainModel;
class PaneWindow;

// The commands that take panes back to where they were, and to where the other one is. Main thread.
class NavigationCommands final : public QObject {
    Q_OBJECT

public:
    NavigationCommands(PaneWindow &window, const MainModel &mainModel);

    // The active pane.
    void backClicked();
    void forwardClicked();
    void swapPanesClicked();
    void sameFolderInBothClicked(); // in the other one, too

    bool canGo(Side side, FolderHistory::Way way) const { return _histories[side].next(way); }
    void go(Side side, FolderHistory::Way way);

private:
    void goOfActivePane(FolderHistory::Way way);
    void rowsAboutToChange(Side side);
    void rowsChanged(Side side);

    PaneWindow &window;
    const MainModel &mainModel;
    PerSide<FolderHistory> _histories;
    struct Travel {
        Side side;
        bool hasArrived = false; // in some folder
    };
    std::optional<Travel> _travel; // under way along a history, which it is not to add to
};
