#pragma once

#include "model/Messages.h"

#include <QSet>

class Alerts;
class FileQueries;
class MainModel;
class OpenPanel;
class OperationDesk;
class PaneTable;
class PaneWindow;
class UserDefaults;

// The commands of the menus and the button row, on the active pane. Each builds a request and posts
// it or hands it to the operations.
class PaneCommands final {
public:
    PaneCommands(PaneWindow &window, MessageBus &bus, MainModel &mainModel, OperationDesk &twinleaf,
                 const FileQueries &queries, UserDefaults &defaults, OpenPanel &openPanel,
                 Alerts &alerts);

    void copyButtonClicked();
    void moveButtonClicked();
    void newFolderButtonClicked();
    void deleteButtonClicked();
    void renameButtonClicked();
    void infoClicked();
    void openClicked();
    void reloadClicked();
    void showHiddenFilesClicked(); // or hides them, in both panes
    void duplicateClicked();
    void openWithClicked();
    void openWith(const QString &application);
    void packageContentClicked();
    void ejectClicked();
    void archiveClicked();
    void unpackClicked();

    // The path at the selected row of the active pane, with nothing selected at row 0 when
    // `orFirst`; empty when there is none.
    QString selectedPath(bool orFirst = false) const;
    // Of the items among the selected rows of the active pane.
    QStringList selectedPaths() const;

private:
    PaneTable *listOnItem() const; // the active pane when commands may act on its selection
    void post(const Message<ItemRequest> &message) const; // for all selected rows
    void postSelectedRow(const Message<ItemRequest> &message) const;

    PaneWindow &window;
    MessageBus &bus;
    MainModel &mainModel;
    OperationDesk &twinleaf;
    const FileQueries &queries;
    UserDefaults &defaults;
    OpenPanel &openPanel;
    Alerts &alerts;
    QSet<QString> _ejecting; // the window takes input meanwhile
};
