#include "app/Application.h"
#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/PathText.h"
#include "platform/Workspace.h"
#include "sheets/viewer/ViewSelected.h"
#include "views/TableViews.h"
#include "window/ClassicButton.h"
#include "window/HistoryButtons.h"
#include "window/ToolsMenu.h"
#include "window/UndoItem.h"

#include <QApplication>
#include <QMenu>
#include <QShortcut>
#include <QTimer>

// Who is connected to whom, and in which order the objects wake up.

namespace {

constexpr std::chrono::milliseconds AfterFirstPaint { 200 };

} // namespace

void Application::connectAll()
{
    _mainModel.setWindowController(&_windowController);
    _mainModel.setTwinleaf(&_twinleaf);
    _mainModel.setInfoSheetController(&_infoSheetController);
    _twinleaf.setMainModel(&_mainModel);
    _twinleaf.setWindowController(&_windowController, &_workingSheet);
    _twinleaf.setArchiveSheet(&_archiveSheet);
    _twinleaf.setNameRefused([this](Operation operation, const OperationRequest &refused) {
        if (operation == Operation::NewFile)
            _newFile.askAgain(refused);
        else
            _mainModel.askAgain(refused);
    });
    _twinleaf.setCutEnded(
        [this](unsigned cut, bool anyMoved) { _fileClipboard.runEnded(cut, anyMoved); });
    _twinleaf.setRunDisplay(&_runsIndicator);
    _windowController.setCommands(&_commands);

    connectPane(Side::Left);
    connectPane(Side::Right);
    for (PaneDataSource *source : { static_cast<PaneDataSource *>(&_leftSource),
                                    static_cast<PaneDataSource *>(&_rightSource) }) {
        connect(source, &PaneDataSource::selectionDidChange, &_mainWindow,
                [this](Side side) { _infoBars.setFileInfoBar(fileList(side)); });
        connect(source, &PaneDataSource::selectionDidChange, &_commands,
                [this] { validateButtons(); });
    }
    connect(qApp, &QApplication::focusChanged, &_commands, [this] { validateButtons(); });
    for (auto button = _mainWindow.buttons.cbegin(); button != _mainWindow.buttons.cend(); ++button)
        connect(button.value(), &ClassicButton::clicked, &_commands,
                [this, command = button.key()] { _commands.run(command); });
    // Later: as long as the window handles one close, it hears of no other.
    connect(
        &_mainWindow, &UnifiedWindow::closeAsked, this,
        [this] { Arrivals::deliver(this, [this] { quit(); }); }, Qt::QueuedConnection);

    connect(&_runsIndicator, &RunsIndicator::cancelAsked, this,
            [this](unsigned ticket) { _twinleaf.runQueue().cancel(ticket); });
    connect(&_runsIndicator, &RunsIndicator::cancelWaitingAsked, this,
            [this] { _twinleaf.runQueue().cancelWaiting(); });
    const Workspace &workspace = _services.workspace;
    connect(&workspace, &Workspace::volumeDidMount, &_volumeReload, &VolumeReload::volumeDidMount);
    connect(&workspace, &Workspace::volumeDidUnmount, &_volumeReload,
            &VolumeReload::volumeDidUnmount);
    connect(&workspace, &Workspace::willPowerOff, this, &Application::powerOff);
    connectPreferences();
    giveRunners();
    // Such a sheet keeps the keyboard from the window, but it does not stand in the way out.
    for (Sheet *sheet :
         { static_cast<Sheet *>(&_workingSheet), static_cast<Sheet *>(&_archiveSheet) }) {
        sheet->addAction(_commands.action(Command::Quit));
        const QKeySequence key(
            shownKey(entryOf(Command::Quit), _mainWindow.leftFileList->classicKeys()),
            QKeySequence::NativeText);
        connect(new QShortcut(key, sheet), &QShortcut::activated, &_commands,
                [this] { _commands.run(Command::Quit); });
    }
}

void Application::connectPane(Side side)
{
    PaneTableView &list = fileList(side);
    PaneTableView &other = fileList(otherSide(side));
    SegmentedControl &navigator = _navigators.control(side);
    list.setCutItems(_cutItems);
    connect(&list, &PaneTableView::otherPaneRequested, &other, [&other] { other.setFocus(); });
    connect(&list, &PaneTableView::terminateRequested, this, &Application::quit);
    connect(&list, &PaneTableView::patternRequested, &_commands, [this](bool select) {
        _commands.run(select ? Command::GroupSelect : Command::GroupDeselect);
    });
    connect(&list, &PaneTableView::contextMenuRequested, &_menus.popUpMenu(),
            [this](const QPoint &position) { _menus.popUpMenu().popup(position); });
    connect(&list, &PaneTableView::folderMenuRequested, &_menus.folderMenu(side),
            [this, side](const QPoint &position) { _menus.folderMenu(side).popup(position); });
    new HistoryButtons(*list.parentWidget(), [this, &list](FolderHistory::Way way) {
        list.setFocus();
        _navigationCommands.go(list.side(), way);
    });
    connect(&navigator, &SegmentedControl::escaped, &list, [&list] { list.setFocus(); });
    connect(&navigator, &SegmentedControl::contextMenuAsked, &_menus.pathMenu(side),
            [this, side](const QPoint &position) { _menus.pathMenu(side).popup(position); });
}

// The button row and the toolbar follow the rules of the menus: what would do nothing does not look
// as if it did.
void Application::validateButtons()
{
    const MenuState state = _commands.state();
    for (auto button = _mainWindow.buttons.cbegin(); button != _mainWindow.buttons.cend(); ++button)
        button.value()->setEnabled(entryOf(button.key()).menuRule(state));
    _toolbar.validate(state);
}

// What the sheets changed is seen at once.
void Application::connectPreferences()
{
    using Preferences = PreferencesController;
    connect(&_preferencesController, &Preferences::dateFormattersToSet, &_windowController,
            &WindowController::setDateFormatters);
    connect(&_preferencesController, &Preferences::pathNavigatorsToSetUp, &_navigators,
            &PathNavigators::setupPathNavigators);
    connect(&_preferencesController, &Preferences::toolTipsToSet, &_navigators,
            &PathNavigators::setToolTips);
    connect(&_preferencesController, &Preferences::infoBarColorsToSet, &_mainWindow,
            [this] { _infoBars.setInfoBarsColors(); });
    connect(&_preferencesController, &Preferences::openWithFavoriteApplicationsToSet,
            &_openWithMenu, &OpenWithMenu::setOpenWithFavoriteApplications);
    connect(&_preferencesController, &Preferences::toolbarToSetUp, &_mainWindow,
            [this] { _toolbar.setupToolbarForWindow(_mainWindow); });
    connect(&_preferencesController, &Preferences::windowLookToSet, &_mainWindow,
            &UnifiedWindow::readLook);
    connect(&_spotlightSearchController, &SpotlightSearchController::folderAsked, &_mainModel,
            [this](const QString &path) {
                if (const PaneTable *list = _windowController.getFirstResponderTableView())
                    _itemsInPane.show(list->side(), PathText::parent(path),
                                      { PathText::lastComponent(path) });
            });
    const auto reload = [this] {
        for (const Side side : { Side::Left, Side::Right })
            _mainModel.showFolder(side, { .path = _mainModel.folder(side) });
    };
    connect(&_terminalController, &TerminalController::commandsHaveRun, &_mainModel, reload);
    connect(&_trashController, &TrashController::itemsPutBack, &_mainModel, reload);
    connect(&_bookmarkController, &BookmarkController::bookmarksMenuToSet, &_bookmarksMenu,
            &BookmarksMenu::setBookmarksMenu);
}

// What answers the commands that the table leaves to the application; one line for each sheet.
void Application::giveRunners()
{
    _commands.setRunner(Command::Quit, [this] { quit(); });
    offerUndo(_commands, _twinleaf, _mainWindow);
    _commands.setRunner(Command::ShowClassicButtons,
                        [this] { _windowController.showClassicButtonsClicked(); });
    constexpr std::pair<Command, Column> sortings[] = { { Command::SortByName, Column::Name },
                                                        { Command::SortBySize, Column::Size },
                                                        { Command::SortByDate, Column::Date },
                                                        { Command::SortByType, Column::Type } };
    for (const auto &[command, column] : sortings)
        _commands.setRunner(command, [this, column = column] { // as a click on its title
            if (const PaneTable *list = _windowController.getFirstResponderTableView())
                Q_EMIT fileList(list->side()).columnClicked(column);
        });
    _commands.setRunner(Command::ChooseInPath, [this] {
        if (const PaneTable *list = _windowController.getFirstResponderTableView())
            _navigators.control(list->side()).setFocus(Qt::ShortcutFocusReason);
    });
    _commands.setRunner(Command::NewFile, [this] { _newFile.newFileClicked(); });
    _commands.setRunner(Command::QuickFilter, [this] {
        if (const PaneTable *list = _windowController.getFirstResponderTableView())
            _quickFilter.show(list->side());
    });
    _commands.setRunner(Command::ShowToolbar, [this] { _toolbar.showToolbarClicked(); });
    _commands.setRunner(Command::CustomizeToolbar, [this] { customizeToolbar(); });
    _commands.setRunner(Command::ChooseInToolbar, [this] { _toolbar.takeKeyboard(); });
    _commands.setRunner(Command::AddBookmark, [this] { _bookmarksMenu.addBookmark(); });
    _commands.setRunner(Command::BookmarkManager,
                        [this] { _bookmarkController.showBookmarkSheet(); });
    _commands.setRunner(Command::InternalTerminal,
                        [this] { _terminalController.showTerminalSheet(); });
    _commands.setRunner(Command::View,
                        [this] { viewSelected(_viewer, _windowController, _mainModel, _bus); });
    _commands.setRunner(Command::Edit, [this] { _textEditing.editClicked(); });
    _commands.setRunner(Command::DeletePermanently,
                        [this] { _permanentDeletion.deletePermanentlyClicked(); });
    _commands.setRunner(Command::Trash, [this] { _trashController.showTrashSheet(); });
    _commands.setRunner(Command::ImageBrowser, [this] {
        _imageBrowser.showImageBrowserSheet(_windowController.getCurrentPath());
    });
    _commands.setRunner(Command::Preferences,
                        [this] { _preferencesController.showPreferencesSheet(); });
    if (_updateCheck.isOffered())
        _commands.setRunner(Command::CheckForNewerVersion,
                            [this] { _updateCheck.checkForNewerVersion(); });
    _commands.setRunner(Command::About, [this] { showAbout(); });
}

void Application::offerTerminalHere()
{
    if (!_commands.action(Command::Terminal)->isVisible())
        return; // none is installed
    _commands.setRunner(Command::TerminalHere, [this] {
        if (const QString folder = _windowController.getCurrentPath(); !folder.isEmpty())
            _twinleaf.openTerminal(folder);
    });
}

void Application::awakeAll()
{
    _mainModel.awakeFromNib();
    _leftSource.awakeFromNib();
    _rightSource.awakeFromNib();
    _windowController.awakeFromNib();
    _infoSheetController.awakeFromNib();
    _navigators.setupPathNavigators();
    _infoBars.setInfoBarsColors();
    // The window does not wait for it.
    QTimer::singleShot(AfterFirstPaint, &_commands, [this] {
        setupToolsMenu(_commands, _services.workspace);
        offerTerminalHere();
    });
    _openWithMenu.setOpenWithFavoriteApplications();
    _bookmarksMenu.setBookmarksMenu();
}
