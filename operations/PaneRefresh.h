#pragma once

#include "model/OperationRecord.h"
#include "model/Side.h"

class MainModel;
class PaneTable;
class PaneWindow;

// Lists the panes again after an operation and puts the selection where the user expects it. Which
// pane is read again hangs on the kind of operation and on the pane with the focus. Main thread.
class PaneRefresh final {
public:
    void setMainModel(MainModel *model) { mainModel = model; }
    void setWindowController(PaneWindow *window) { windowController = window; }

    void updateFileLists(const OperationRecord &record);

private:
    // Kept: a row beyond the end selects the row after the last, which is none.
    static void selectRowIndex(int row, PaneTable &table);
    void postDirectoryChangedNotification(Side side);

    // The application's own.
    MainModel *mainModel = nullptr;
    PaneWindow *windowController = nullptr;
};
