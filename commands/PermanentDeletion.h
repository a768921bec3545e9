#pragma once

class Alerts;
class MainModel;
class OperationDesk;
class PaneWindow;
class Waiting;

// Deletes what is selected in the active pane for good, when the person says so: that is always
// asked. Main thread.
class PermanentDeletion final {
public:
    PermanentDeletion(PaneWindow &window, const MainModel &mainModel, OperationDesk &twinleaf,
                      Waiting &waiting, Alerts &alerts);

    void deletePermanentlyClicked();

private:
    PaneWindow &window;
    const MainModel &mainModel;
    OperationDesk &twinleaf;
    Waiting &waiting;
    Alerts &alerts;
};
