#pragma once

class Alerts;
class Launching;
class MainModel;
class PaneWindow;
class Waiting;
class Workspace;

// Opens the selected files of the active pane in the desktop's editor of texts, whatever kind they
// are of: a program or an entry is edited, never started. Main thread.
class TextEditing final {
public:
    struct Services {
        Launching &launching;
        Workspace &workspace;
        Waiting &waiting;
        Alerts &alerts;
    };
    TextEditing(PaneWindow &window, const MainModel &mainModel, const Services &services);

    void editClicked();

private:
    PaneWindow &window;
    const MainModel &mainModel;
    const Services _services;
};
