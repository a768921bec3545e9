#pragma once

#include "app/CommandLine.h"
#include "app/Services.h"
#include "commands/Commands.h"
#include "commands/FolderCommands.h"
#include "commands/PaneCommands.h"
#include "commands/SelectionCommands.h"
#include "commands/UpdateCheck.h"
#include "files/DiskQuestions.h"
#include "model/MainModel.h"
#include "model/MessageBus.h"
#include "operations/Authentication.h"
#include "operations/Twinleaf.h"
#include "settings/BookmarkStore.h"
#include "sheets/ArchiveSheet.h"
#include "sheets/bookmarks/BookmarkController.h"
#include "sheets/information/InfoSheetController.h"
#include "sheets/preferences/FavoriteApplicationsController.h"
#include "sheets/preferences/PreferencesController.h"
#include "sheets/WorkingSheet.h"
#include "views/PaneDragAndDrop.h"
#include "views/TableViewDataSources.h"
#include "widgets/FileKinds.h"
#include "widgets/PathIcons.h"
#include "window/BookmarksMenu.h"
#include "window/FolderSize.h"
#include "window/InfoBars.h"
#include "window/MainWindowLayout.h"
#include "window/MenuBar.h"
#include "window/OpenWithMenu.h"
#include "window/PathNavigators.h"
#include "window/RunsIndicator.h"
#include "window/Toolbar.h"
#include "window/VolumeReload.h"
#include "window/WaitingWindow.h"
#include "window/WindowController.h"

#include <QObject>

// Owns every long-lived object, in the order of construction, on the services it is given, and sees
// to the program's end. The program, its tests and its benchmarks are all built on it. Main thread.
class Application final : public QObject {
    Q_OBJECT

public:
    explicit Application(const Services &services, const CommandLine &line = {});
    ~Application() override;

    void start();

    // Asks when work is under way; then stops it between two items, saves and ends the event loop.
    // Work that does not come to an end is left to the next start: where nobody answers, and when
    // quit is asked for again and the person wants it so.
    void quit();

    // After the event loop: stops the work and writes the settings. False when threads are left
    // that stand at a server that is gone: only the end of the process ends them.
    bool end();

    MessageBus &bus() { return _bus; }
    const FileKinds &kinds() const { return _kinds; }
    Waiting &waiting() { return _waiting; }
    Authentication &authentication() { return _authentication; }
    Twinleaf &twinleaf() { return _twinleaf; }
    MainModel &mainModel() { return _mainModel; }
    MainWindowLayout &mainWindow() { return _mainWindow; }
    PaneTableView &fileList(Side side) { return _mainWindow.fileList(side); }
    WindowController &windowController() { return _windowController; }
    Commands &commands() { return _commands; }
    MenuBar &menus() { return _menus; }
    InfoSheetController &infoSheetController() { return _infoSheetController; }
    Toolbar &toolbar() { return _toolbar; }
    BookmarkStore &bookmarkStore() { return _bookmarkStore; }
    PreferencesController &preferencesController() { return _preferencesController; }

private:
    void takeFolders(); // of the command line
    void connectAll(); // Wiring.cpp
    void connectPane(Side side); // Wiring.cpp
    void validateButtons(); // Wiring.cpp
    void connectPreferences(); // Wiring.cpp
    void giveRunners(); // Wiring.cpp
    void awakeAll(); // Wiring.cpp
    ExpandSelection askForPattern(const QString &title);
    void showAbout();
    void customizeToolbar();
    void powerOff();
    void save();
    void stopWork(); // however long it takes
    void stopAnsweredWork(); // as long as somebody answers; only in the event loop
    void leaveWork();

    const Services _services;
    const CommandLine _line;
    MessageBus _bus;
    FileKinds _kinds;
    Waiting _waiting;
    Authentication _authentication;
    Twinleaf _twinleaf;
    MainModel _mainModel;
    MainWindowLayout _mainWindow;
    WaitingWindow _waitingWindow;
    PathNavigators _navigators;
    InfoBars _infoBars;
    FolderSize _folderSize;
    TableViewDataSourceLeft _leftSource;
    TableViewDataSourceRight _rightSource;
    WorkingSheet _workingSheet;
    ArchiveSheet _archiveSheet;
    WindowController _windowController;
    DiskQuestions _diskQuestions;
    PathIcons _fileIcons;
    PathIcons _applicationIcons;
    InfoSheetController _infoSheetController;
    VolumeReload _volumeReload;
    PaneDragAndDrop _leftDrops;
    PaneDragAndDrop _rightDrops;
    PaneCommands _paneCommands;
    FolderCommands _folderCommands;
    SelectionCommands _selectionCommands;
    Commands _commands;
    MenuBar _menus;
    RunsIndicator _runsIndicator;
    BookmarkStore _bookmarkStore;
    BookmarksMenu _bookmarksMenu;
    OpenWithMenu _openWithMenu;
    BookmarkController _bookmarkController;
    FavoriteApplicationsController _favoriteApplicationsController;
    PreferencesController _preferencesController;
    Toolbar _toolbar;
    UpdateCheck _updateCheck;
    ExpandSelection _expandSelection; // as the sheet was left
    bool _hasStarted = false;
    bool _quitting = false;
    bool _stoppingWork = false; // for quit()
    bool _leavesWork = false; // to the next start
    bool _endingWork = false;
};
