#pragma once

#include "files/ClippedFiles.h"
#include "model/Side.h"

#include <QStringList>

class Alerts;
class FileClipboard;
class IncomingItems;
class MainModel;
class OperationDesk;
class PaneCommands;
class PaneWindow;

// The commands between the active pane and the clipboard.
class ClipboardCommands final {
public:
    ClipboardCommands(PaneWindow &window, const MainModel &mainModel, const PaneCommands &panes,
                      FileClipboard &clipboard, const IncomingItems &incoming,
                      OperationDesk &twinleaf, Alerts &alerts);

    void cutClicked();
    void copyClicked();
    // Copies or moves what is held into the pane's folder. Copies of what lies there already stand
    // beside it; what was cut there stays.
    void pasteClicked();
    void copyNameClicked();
    void copyPathClicked();

private:
    void put(ClippedFiles::Intent intent);
    void pasteInto(const QString &folder, Side side);
    void tellOthers(const QStringList &addresses) const;

    PaneWindow &window;
    const MainModel &mainModel;
    const PaneCommands &panes;
    FileClipboard &clipboard;
    const IncomingItems &incoming;
    OperationDesk &twinleaf;
    Alerts &alerts;
};
