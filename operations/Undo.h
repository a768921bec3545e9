#pragma once

#include "operations/UndoHistory.h"

class Alerts;
class CopyMove;
class MainModel;
class PaneWindow;
class Programs;
class RunDisplay;
class Workers;
class Workspace;
struct OperationRecord;

// Undoes the last operation, after asking where that takes something out of sight. There is no
// redo. Main thread.
class Undo final {
public:
    Undo(Alerts &alerts, Programs &programs, Workspace &workspace, CopyMove &copyMove,
         Workers &workers);

    // Outlets, set before the first request.
    void setMainModel(const MainModel *model) { mainModel = model; }
    void setWindowController(PaneWindow *window) { windowController = window; }
    void setRunDisplay(RunDisplay *runDisplay) { display = runDisplay; }

    UndoHistory &history() { return _history; }

    // Refused while anything is under way: the person may mean that.
    void undoLast();

private:
    bool isAgreedTo(const DoneItems &done, const QString &text) const;
    void run(const DoneItems &done, unsigned ticket, OperationRecord &record);
    void tellWhatIsBack(const DoneItems &done) const;
    void showLine(const QString &line) const;

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    CopyMove &copyMove;
    Workers &workers;
    const MainModel *mainModel = nullptr; // the application's, as the next two
    PaneWindow *windowController = nullptr;
    RunDisplay *display = nullptr;
    UndoHistory _history;
};
