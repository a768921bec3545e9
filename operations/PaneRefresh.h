#pragma once

#include "model/OperationRecord.h"
#include "model/RowSet.h"
#include "model/Side.h"

#include <QString>

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
    void postDirectoryChangedNotification(Side side, const QString &path);

    // Kept: a row beyond the end selects the row after the last, which is none.
    static void selectRowIndex(int row, PaneTable &table);
    static void selectRowIndexes(const RowSet &rows, PaneTable &table);

private:
    void postCurrent(Side side);

    // The application's own.
    MainModel *mainModel = nullptr;
    PaneWindow *windowController = nullptr;
};
