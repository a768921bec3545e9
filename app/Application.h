#pragma once

#include "app/CommandLine.h"
#include "app/Services.h"
#include "app/SessionSaving.h"
#include "commands/ClipboardCommands.h"
#include "commands/Commands.h"
#include "commands/FileClipboard.h"
#include "commands/FolderCommands.h"
#include "commands/NavigationCommands.h"
#include "commands/NewFile.h"
#include "commands/PaneCommands.h"
#include "commands/PermanentDeletion.h"
#include "commands/SelectionCommands.h"
#include "commands/TextEditing.h"
#include "commands/UpdateCheck.h"
#include "files/DiskQuestions.h"
#include "model/CutItems.h"
#include "model/MainModel.h"
#include "model/MessageBus.h"
#include "operations/Authentication.h"
#include "operations/Twinleaf.h"
#include "settings/BookmarkStore.h"
#include "sheets/ArchiveSheet.h"
#include "sheets/bookmarks/BookmarkController.h"
#include "sheets/images/ImageBrowser.h"
#include "sheets/information/InfoSheetController.h"
#include "sheets/preferences/FavoriteApplicationsController.h"
#include "sheets/preferences/PreferencesController.h"
#include "sheets/search/SpotlightSearchController.h"
#include "sheets/terminal/TerminalController.h"
#include "sheets/trash/TrashController.h"
#include "sheets/viewer/Viewer.h"
#include "sheets/WorkingSheet.h"
#include "views/IncomingItems.h"
#include "views/PaneDragAndDrop.h"
#include "views/TableViewDataSources.h"
#include "widgets/FileKinds.h"
#include "widgets/PathIcons.h"
#include "window/BookmarksMenu.h"
#include "window/FolderRefresh.h"
#include "window/FolderSize.h"
#include "window/FolderStatus.h"
#include "window/InfoBars.h"
#include "window/ItemsInPane.h"
#include "window/MainWindowLayout.h"
#include "window/MenuBar.h"
#include "window/OpenWithMenu.h"
#include "window/PathNavigators.h"
#include "window/QuickFilter.h"
#include "window/RunsIndicator.h"
#include "window/ShowOnRequest.h"
#include "window/Toolbar.h"
#include "window/TypeApplicationsMenu.h"
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

    // Where the program stands goes into the settings, which are written soon; or at once.
    void noteState();
    void save();

    // The session is being saved and may end then. While work is under way, and if it may ask, it
    // asks for leave to stop it; false: the person would rather have the session go on.
    bool commitSession(const std::function<bool()> &mayAsk);

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
    FolderRefresh &folderRefresh() { return _folderRefresh; }
    Toolbar &toolbar() { return _toolbar; }
    BookmarkStore &bookmarkStore() { return _bookmarkStore; }
    ImageBrowser &imageBrowser() { return _imageBrowser; }
    PreferencesController &preferencesController() { return _preferencesController; }
    SpotlightSearchController &spotlightSearchController() { return _spotlightSearchController; }
    ShowOnRequest &showOnRequest() { return _showOnRequest; }
    TerminalController &terminalController() { return _terminalController; }

Q_SIGNALS:
    void isEnding(); // nothing keeps it any more but work that is stopped

private:
    void takeFolders(); // of the command line
    void connectAll(); // Wiring.cpp
    void connectPane(Side side); // Wiring.cpp
    void validateButtons(); // Wiring.cpp
    void connectPreferences(); // Wiring.cpp
    void giveRunners(); // Wiring.cpp
    void offerTerminalHere(); // Wiring.cpp
    void awakeAll(); // Wiring.cpp
    ExpandSelection askForPattern(const QString &title);
    QString askForFolder(const QString &prompt, const QString &path);
    void showAbout();
    void customizeToolbar();
    void powerOff();
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
    QuickFilter _quickFilter;
    ItemsInPane _itemsInPane;
    PathNavigators _navigators;
    InfoBars _infoBars;
    FolderSize _folderSize;
    TableViewDataSourceLeft _leftSource;
    TableViewDataSourceRight _rightSource;
    WorkingSheet _workingSheet;
    ArchiveSheet _archiveSheet;
    WindowController _windowController;
    DiskQuestions _diskQuestions;
    FolderStatus _folderStatus;
    PathIcons _fileIcons;
    PathIcons _applicationIcons;
    InfoSheetController _infoSheetController;
    ShowOnRequest _showOnRequest;
    VolumeReload _volumeReload;
    FolderRefresh _folderRefresh;
    PaneDragAndDrop _leftDrops;
    PaneDragAndDrop _rightDrops;
    PaneCommands _paneCommands;
    CutItems _cutItems;
    FileClipboard _fileClipboard;
    IncomingItems _pastedItems;
    ClipboardCommands _clipboardCommands;
    FolderCommands _folderCommands;
    NavigationCommands _navigationCommands;
    SelectionCommands _selectionCommands;
    NewFile _newFile;
    PermanentDeletion _permanentDeletion;
    Commands _commands;
    MenuBar _menus;
    RunsIndicator _runsIndicator;
    BookmarkStore _bookmarkStore;
    BookmarksMenu _bookmarksMenu;
    OpenWithMenu _openWithMenu;
    TypeApplicationsMenu _typeApplicationsMenu;
    BookmarkController _bookmarkController;
    ImageBrowser _imageBrowser;
    FavoriteApplicationsController _favoriteApplicationsController;
    PreferencesController _preferencesController;
    SpotlightSearchController _spotlightSearchController;
    TerminalController _terminalController;
    TextEditing _textEditing;
    Viewer _viewer;
    TrashController _trashController;
    Toolbar _toolbar;
    UpdateCheck _updateCheck;
    ExpandSelection _expandSelection; // as the sheet was left
    bool _hasStarted = false;
    bool _quitting = false;
    bool _stoppingWork = false; // for quit()
    bool _leavesWork = false; // to the next start
    bool _endingWork = false;
    SessionSaving _sessionSaving { *this };
};
