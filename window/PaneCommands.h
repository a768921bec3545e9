#pragma once

#include "model/Messages.h"

class FileQueries;
class MainModel;
class OperationDesk;
class PaneTable;
class PaneWindow;

// The commands of the menus and the button row, on the active pane. Each builds a request and posts
// it or hands it to the operations.
class PaneCommands final {
public:
    PaneCommands(PaneWindow &window, MessageBus &bus, const MainModel &mainModel,
                 OperationDesk &twinleaf, const FileQueries &queries);

    void copyButtonClicked();
    void moveButtonClicked();
    void newFolderButtonClicked();
    void deleteButtonClicked();
    void renameButtonClicked();
    void openClicked();
    void reloadClicked();
    void duplicateClicked();

private:
    PaneTable *listOnItem() const; // the active pane when commands may act on its selection
    void post(const Message<ItemRequest> &message) const;

    PaneWindow &window;
    MessageBus &bus;
    const MainModel &mainModel;
    OperationDesk &twinleaf;
    const FileQueries &queries;
};

// "Report.txt" becomes "Report Copy.txt", the folder "Photos" becomes "Photos Copy".
QString nameOfDuplicate(const QString &name, bool isFolder);
