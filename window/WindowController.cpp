#include "window/WindowController.h"

#include "base/Localized.h"
#include "files/PathText.h"
#include "model/MainModel.h"
#include "operations/Twinleaf.h"
#include "platform/OpenDialogs.h"
#include "platform/Workspace.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "sheets/ExpandSelectionSheet.h"
#include "views/TableViews.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/InputSheet.h"
#include "window/ClassicButton.h"
#include "window/MainWindowLayout.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds AfterFirstPaint { 200 };

} // namespace

WindowController::WindowController(MainWindowLayout &layout, MessageBus &messages, MainModel &model,
                                   Twinleaf &operations, const WindowServices &services)
    : mainWindow(layout)
    , bus(messages)
    , mainModel(model)
    , twinleaf(operations)
    , defaults(services.defaults)
    , workspace(services.workspace)
    , openDialogs(services.openDialogs)
    , _bookmarkStore(services.defaults)
    , _navigators(*layout.segmentedControls.left, *layout.segmentedControls.right, messages, model,
                  operations, services.defaults)
    , _infoBars(layout.infoBars, model, operations, services.defaults)
    , _folderSize(messages, model, operations, _infoBars)
    , _commands(*this, messages, model, operations, operations, services.openPanel, services.alerts)
    , _folderCommands(*this, messages, operations, services.workspace, services.alerts)
    , _selectionCommands(
          *this, messages, model, operations, operations, services.defaults,
          [this](const QString &title) { return getInputFromExpandSelectionSheet(title); })
    , _menus(*layout.menuBar(), _commands, _folderCommands, _selectionCommands, *this, operations,
             layout.leftFileList->classicKeys())
    , _bookmarksMenu(_menus.bookmarksMenu(), _bookmarkStore, _commands, *this, messages, operations,
                     services.alerts)
    , _openWithMenu(_menus.menuOpenWithFavorite(), _bookmarkStore, _commands, services.workspace)
    , _workingSheet(messages, &layout)
    , _archiveSheet(messages, &layout)
{
    bus.subscribe(ApplicationWillTerminate, this, &WindowController::applicationWillTerminate);
    connectControls();
}

WindowController::~WindowController()
{
    bus.unsubscribe(this);
}

void WindowController::connectControls()
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *before, const QWidget *now) {
        if (now == mainWindow.menuBar())
            _focusBeforeMenuBar = before;
    });
    const auto click = [this](ClassicButton *button, void (PaneCommands::*command)()) {
        connect(button, &ClassicButton::clicked, this, [this, command] { (_commands.*command)(); });
    };
    click(mainWindow.copyButton, &PaneCommands::copyButtonClicked);
    click(mainWindow.moveButton, &PaneCommands::moveButtonClicked);
    click(mainWindow.newFolderButton, &PaneCommands::newFolderButtonClicked);
    click(mainWindow.deleteButton, &PaneCommands::deleteButtonClicked);
    click(mainWindow.renameButton, &PaneCommands::renameButtonClicked);

    for (const Side side : { Side::Left, Side::Right }) {
        PaneTableView &list = mainWindow.fileList(side);
        PaneTableView &other = mainWindow.fileList(otherSide(side));
        SegmentedControl &navigator = _navigators.control(side);
        connect(&list, &PaneTableView::otherPaneRequested, &other, [&other] { other.setFocus(); });
        connect(&list, &PaneTableView::terminateRequested, this,
                &WindowController::terminateRequested);
        connect(&navigator, &SegmentedControl::escaped, &list, [&list] { list.setFocus(); });
        connect(&navigator, &SegmentedControl::contextMenuAsked, this,
                [this, side](const QPoint &position) { _menus.pathMenu(side).popup(position); });
        connect(&list, &PaneTableView::contextMenuRequested, this,
                [this](const QPoint &position) { _menus.popUpMenu().popup(position); });
    }

    connect(&_menus, &MenuBar::showHiddenFilesClicked, this,
            &WindowController::showHiddenFilesClicked);
    connect(&_menus, &MenuBar::showClassicButtonsClicked, this,
            &WindowController::showClassicButtonsClicked);
    connect(&_menus, &MenuBar::pathAsked, this, [this] {
        if (const auto side = activeSide())
            _navigators.control(*side).setFocus(Qt::ShortcutFocusReason);
    });
    connect(&_menus, &MenuBar::terminateAsked, this, &WindowController::terminateRequested);
    connect(&mainWindow, &UnifiedWindow::closeAsked, this, &WindowController::terminateRequested);
}

void WindowController::awakeFromNib()
{
    const Qt::Alignment dates = mainModel.dateRightAlignment() ? Qt::AlignRight : Qt::AlignLeft;
    for (const Side side : { Side::Left, Side::Right })
        mainWindow.fileList(side).tableModel().setDateAlignment(dates);

    if (!defaults.boolean(Settings::ShowClassicButtons).value_or(true))
        showClassicButtonsClicked();
    else
        _menus.menuItemShowClassicButtons()->setText(localized("Hide Classic buttons"));

    _navigators.setupPathNavigators();
    _infoBars.setInfoBarsColors();
    // The window does not wait for it: this reads what every installed program says of itself.
    QTimer::singleShot(AfterFirstPaint, this, &WindowController::setupToolsMenu);
    setDateFormatters();
    _openWithMenu.setOpenWithFavoriteApplications();
    _bookmarksMenu.setBookmarksMenu();
}

void WindowController::setDateFormatters()
{
    const Settings::Key key =
        mainModel.useLongDateFormat() ? Settings::TimeDateFormat : Settings::ShortTimeDateFormat;
    const QString format = defaults.string(key).value_or(QString());
    for (const Side side : { Side::Left, Side::Right })
        mainWindow.fileList(side).setDateFormat(format);
}

void WindowController::setFileInfoBar(Side side)
{
    _infoBars.setFileInfoBar(mainWindow.fileList(side));
}

void WindowController::showClassicButtonsClicked()
{
    const bool show = TWClassicButtonsVisible;
    _menus.menuItemShowClassicButtons()->setText(show ? localized("Hide Classic buttons")
                                                      : localized("Show Classic buttons"));
    defaults.setValue(Settings::ShowClassicButtons, show);
    setClassicButtonsVisible(show);
    TWClassicButtonsVisible = !TWClassicButtonsVisible;
}

void WindowController::setClassicButtonsVisible(bool visible)
{
    // The split view takes the row's height, 45 points, when it goes.
    mainWindow.classicButtons->setVisible(visible);
    updateMainWindow();
}

void WindowController::showHiddenFilesClicked()
{
    defaults.setValue(Settings::ShowHiddenFiles, !mainModel.showHiddenFiles());
    mainModel.setUserDefaultValues();
    const QString left = getCurrentPathFromSegmentedControl(Side::Left);
    const QString right = getCurrentPathFromSegmentedControl(Side::Right);
    bus.post(DirectoryChanged[Side::Left], { .path = left });
    bus.post(DirectoryChanged[Side::Right], { .path = right });
}

void WindowController::setupToolsMenu()
{
    const auto add = [this](const char *text, Tool tool) {
        const QString application = workspace.applicationForTool(tool);
        if (!application.isEmpty()) // what is not installed is not offered
            _menus.addTool(localized(text), workspace.iconOfApplication(application),
                           [this, tool] { twinleaf.launchTool(tool); });
    };
    add(QT_TRANSLATE_NOOP("Twinleaf", "Terminal"), Tool::Terminal);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Console"), Tool::Console);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Activity monitor"), Tool::ActivityMonitor);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Disk utility"), Tool::DiskUtility);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Keychain"), Tool::Keychain);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Network"), Tool::NetworkUtility);
    add(QT_TRANSLATE_NOOP("Twinleaf", "Users"), Tool::NetInfoManager);
    add(QT_TRANSLATE_NOOP("Twinleaf", "System information"), Tool::SystemProfiler);
}

void WindowController::reloadFileListsForVolumes()
{
    if (openDialogs.anyOpen()) {
        connect(&openDialogs, &OpenDialogs::allClosed, this,
                &WindowController::reloadFileListsForVolumes,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection
                                   | Qt::UniqueConnection));
        return;
    }
    // The segment under which the desktop mounts volumes; a pane elsewhere has nothing to show.
    const int segment = int(PathText::components(workspace.volumesFolder()).size()) - 1;
    for (const Side side : { Side::Left, Side::Right })
        if (_navigators.control(side).label(segment) == localized("Volumes"))
            bus.post(DirectoryChanged[side], { .path = getCurrentPathFromSegmentedControl(side) });
}

void WindowController::applicationWillTerminate(const NoPayload &)
{
    if (defaults.boolean(Settings::SaveLastPaths).value_or(true)) {
        defaults.setValue(Settings::LeftFileListLastPath,
                          _navigators.getCurrentNavigatorPath(Side::Left));
        defaults.setValue(Settings::RightFileListLastPath,
                          _navigators.getCurrentNavigatorPath(Side::Right));
    }
    defaults.setValue(Settings::SelectedItemsLeft,
                      mainModel.selectedItems(Side::Left).toDictionary());
    defaults.setValue(Settings::SelectedItemsRight,
                      mainModel.selectedItems(Side::Right).toDictionary());
}

std::optional<Side> WindowController::activeSide() const
{
    // The window's own focus, which stays while a menu or a sheet has the keyboard; the menu bar
    // alone takes it for itself.
    const QWidget *focus = mainWindow.focusWidget();
    if (focus == mainWindow.menuBar())
        focus = _focusBeforeMenuBar;
    for (const Side side : { Side::Left, Side::Right })
        if (focus == &mainWindow.fileList(side))
            return side;
    return std::nullopt;
}

QString WindowController::getCurrentPath() const
{
    const auto side = activeSide();
    return side ? _navigators.navigatorPath(*side) : QString();
}

PaneTable &WindowController::getTableView(Side side)
{
    return mainWindow.fileList(side);
}

PaneTable *WindowController::getFirstResponderTableView()
{
    const auto side = activeSide();
    return side ? &mainWindow.fileList(*side) : nullptr;
}

PaneTable *WindowController::getOtherResponderTableView()
{
    const auto side = activeSide();
    return side ? &mainWindow.fileList(otherSide(*side)) : nullptr;
}

QString WindowController::getCurrentPathFromSegmentedControl(Side side) const
{
    return _navigators.navigatorPath(side);
}

int WindowController::getSelectedSegmentFromSegmentedControl(Side side) const
{
    return _navigators.getSelectedSegmentFromSegmentedControl(side);
}

QString WindowController::completeNavigatorPath(Side side) const
{
    return _navigators.completeNavigatorPath(side);
}

bool WindowController::isItemInNavigatorPath(const QString &item, Side side) const
{
    return _navigators.isItemInNavigatorPath(item, side);
}

void WindowController::setMenuItemShowHiddenItems(const QString &title)
{
    _menus.menuItemShowHiddenFiles()->setText(title);
}

QString WindowController::getStringFromInputSheet(const QString &prompt, const QString &inputText)
{
    const OpenDialogs::Guard guard(openDialogs);
    InputSheet sheet(prompt, inputText, &mainWindow);
    return sheet.getString();
}

ExpandSelection WindowController::getInputFromExpandSelectionSheet(const QString &title)
{
    const OpenDialogs::Guard guard(openDialogs);
    _expandSelection = ExpandSelectionSheet(title, _expandSelection, &mainWindow).getInput();
    return _expandSelection;
}

void WindowController::setProgressIndicator(bool spinning)
{
    if (spinning)
        mainWindow.progressIndicator->start();
    else
        mainWindow.progressIndicator->stop();
}

void WindowController::updateMainWindow()
{
    mainWindow.centralWidget()->repaint();
}
