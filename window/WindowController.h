#pragma once

#include "commands/FolderCommands.h"
#include "commands/PaneCommands.h"
#include "commands/SelectionCommands.h"
#include "model/Messages.h"
#include "model/PaneWindow.h"
#include "settings/BookmarkStore.h"
#include "sheets/ArchiveSheet.h"
#include "sheets/WorkingSheet.h"
#include "window/BookmarksMenu.h"
#include "window/FolderSize.h"
#include "window/InfoBars.h"
#include "window/MenuBar.h"
#include "window/OpenWithMenu.h"
#include "window/PathNavigators.h"

#include <QObject>
#include <QPointer>

class Alerts;
class MainWindowLayout;
class OpenPanel;
class OpenDialogs;
class Twinleaf;
class Workspace;

// What lies outside the window and its panes.
struct WindowServices {
    UserDefaults &defaults;
    Workspace &workspace;
    OpenPanel &openPanel;
    Alerts &alerts;
    OpenDialogs &openDialogs;
};

// The hub of the main window: its start and what is saved at its end, the button row, and the
// answers that the pane model and the operations ask of the window. Main thread.
class WindowController final : public QObject, public PaneWindow {
    Q_OBJECT

public:
    WindowController(MainWindowLayout &mainWindow, MessageBus &bus, MainModel &mainModel,
                     Twinleaf &twinleaf, const WindowServices &services);
    ~WindowController() override;

    void awakeFromNib();

    void volumeDidMount() { reloadFileListsForVolumes(); }
    void volumeDidUnmount() { reloadFileListsForVolumes(); }
    void showClassicButtonsClicked();
    void setClassicButtonsVisible(bool visible);
    void showHiddenFilesClicked();
    QString getCurrentPath() const; // the active pane's; empty without one
    void setFileInfoBar(Side side);
    void setDateFormatters();
    void setupToolsMenu();

    MenuBar &menus() { return _menus; }
    ProgressSheet &workingSheet() { return _workingSheet; }
    ArchiveProgressSheet &archiveSheet() { return _archiveSheet; }

    PaneTable &getTableView(Side side) override;
    PaneTable *getFirstResponderTableView() override;
    PaneTable *getOtherResponderTableView() override;
    QString getCurrentPathFromSegmentedControl(Side side) const override;
    int getSelectedSegmentFromSegmentedControl(Side side) const override;
    QString completeNavigatorPath(Side side) const override;
    bool isItemInNavigatorPath(const QString &item, Side side) const override;
    void setMenuItemShowHiddenItems(const QString &title) override;
    QString getStringFromInputSheet(const QString &prompt, const QString &inputText) override;
    void setProgressIndicator(bool spinning) override;
    void updateMainWindow() override;

Q_SIGNALS:
    void terminateRequested();

private:
    void applicationWillTerminate(const NoPayload &);
    void reloadFileListsForVolumes();
    void connectControls();
    ExpandSelection getInputFromExpandSelectionSheet(const QString &title);
    std::optional<Side> activeSide() const;

    MainWindowLayout &mainWindow;
    MessageBus &bus;
    MainModel &mainModel;
    Twinleaf &twinleaf;
    UserDefaults &defaults;
    const Workspace &workspace;
    OpenDialogs &openDialogs;
    BookmarkStore _bookmarkStore;
    PathNavigators _navigators;
    QPointer<QWidget> _focusBeforeMenuBar;
    ExpandSelection _expandSelection; // as the sheet was left
    InfoBars _infoBars;
    FolderSize _folderSize;
    PaneCommands _commands;
    FolderCommands _folderCommands;
    SelectionCommands _selectionCommands;
    MenuBar _menus;
    BookmarksMenu _bookmarksMenu;
    OpenWithMenu _openWithMenu;
    WorkingSheet _workingSheet;
    ArchiveSheet _archiveSheet;
    // Kept: despite its name, true while the button row is hidden.
    bool TWClassicButtonsVisible = false;
};
