#include "app/Application.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "platform/Alerts.h"
#include "platform/OpenDialogs.h"
#include "platform/Workspace.h"
#include "settings/BundleInfo.h"
#include "settings/StoredWords.h"
#include "settings/UserDefaults.h"
#include "sheets/About.h"
#include "sheets/ExpandSelectionSheet.h"
#include "views/TableViews.h"
#include "widgets/InputSheet.h"
#include "window/ToolbarCustomization.h"
#include "window/WindowFrame.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QScopeGuard>
#include <QTimer>

#include <chrono>

namespace {

// At the servers that work stands at while the program ends.
constexpr std::chrono::seconds BetweenLooks { 1 };

} // namespace

Application::Application(const Services &services, const CommandLine &line)
    : _services(services)
    , _line(line)
    , _authentication(services.authorization, services.programs, services.alerts, _bus)
    , _twinleaf(_bus, services.defaults, services.alerts, services.programs, services.workspace,
                _kinds, services.openDialogs, _waiting, _authentication)
    , _mainModel(_bus, services.defaults, services.alerts, _twinleaf, _twinleaf, _kinds, _waiting)
    , _mainWindow(_bus, _mainModel, services.defaults)
    , _waitingWindow(_mainWindow, _waiting)
    , _quickFilter(_mainWindow, _mainModel)
    , _itemsInPane(_mainWindow, _mainModel, _quickFilter, _waiting)
    , _navigators(*_mainWindow.segmentedControls.left, *_mainWindow.segmentedControls.right, _bus,
                  _mainModel, _twinleaf, services.defaults)
    , _infoBars(_mainWindow.infoBars, _mainModel, _twinleaf, services.defaults)
    , _folderSize(_bus, _mainModel, _twinleaf, _infoBars)
    , _leftSource(*_mainWindow.leftFileList, _mainModel, _bus, services.defaults)
    , _rightSource(*_mainWindow.rightFileList, _mainModel, _bus, services.defaults)
    , _workingSheet(_bus, &_mainWindow)
    , _archiveSheet(_bus, &_mainWindow)
    , _windowController(_mainWindow, _bus, _navigators, _mainModel, services.defaults,
                        services.openDialogs)
    , _folderStatus(_mainWindow.folderStatus, _mainModel, _diskQuestions, _mainWindow)
    , _fileIcons(_diskQuestions,
                 [this](const QString &path, const FileStatus &status) {
                     return _kinds.icon(PathText::lastComponent(path), status.kind);
                 })
    , _applicationIcons(_diskQuestions,
                        [this](const QString &path, const FileStatus &) {
                            return _services.workspace.iconOfApplication(path);
                        })
    , _infoSheetController(_twinleaf, _authentication, _applicationIcons, _kinds, services.alerts,
                           services.openPanel, services.openDialogs, _waiting, _mainWindow)
    , _showOnRequest(_mainWindow, _windowController, _itemsInPane, _infoSheetController,
                     services.openDialogs, _waiting)
    , _volumeReload(_mainModel, _navigators, services.workspace, services.openDialogs)
    , _folderRefresh(_mainModel, _windowController, services.openDialogs,
                     [this] { return _twinleaf.anyRunning(); })
    , _leftDrops(*_mainWindow.leftFileList, _mainModel, _twinleaf, _twinleaf, services.alerts)
    , _rightDrops(*_mainWindow.rightFileList, _mainModel, _twinleaf, _twinleaf, services.alerts)
    , _paneCommands(_windowController, _bus, _mainModel, _twinleaf, _twinleaf, services.defaults,
                    services.openPanel, services.alerts)
    , _fileClipboard(_cutItems, _waiting, services.workspace)
    , _pastedItems(_mainModel, _twinleaf, _twinleaf, services.alerts)
    , _clipboardCommands(_windowController, _mainModel, _paneCommands, _fileClipboard, _pastedItems,
                         _twinleaf, services.alerts)
    , _folderCommands(
          _windowController, _mainModel, _twinleaf, services.workspace, services.alerts,
          [this](const QString &prompt, const QString &path) { return askForFolder(prompt, path); })
    , _navigationCommands(_windowController, _mainModel)
    , _selectionCommands(_windowController, _bus, _mainModel, _twinleaf, _twinleaf, _waiting,
                         services.defaults,
                         [this](const QString &title) { return askForPattern(title); })
    , _newFile(_windowController, _mainModel, _twinleaf, _twinleaf)
    , _permanentDeletion(_windowController, _mainModel, _twinleaf, _waiting, services.alerts)
    , _commands({ _paneCommands, _clipboardCommands, _selectionCommands, _folderCommands,
                  _navigationCommands, _twinleaf },
                _windowController, _twinleaf, _mainWindow.leftFileList->classicKeys())
    , _menus(*_mainWindow.menuBar(), _commands)
    , _runsIndicator(_mainWindow, _workingSheet)
    , _bookmarkStore(services.defaults)
    , _bookmarksMenu(_menus.bookmarksMenu(), _bookmarkStore, _paneCommands, _windowController,
                     _mainModel, _twinleaf, services.alerts, _fileIcons)
    , _openWithMenu(_menus.openWithMenu(), _bookmarkStore, _paneCommands, _applicationIcons)
    , _typeApplicationsMenu(_menus.openWithMenu(), _paneCommands, _applicationIcons,
                            { services.workspace, _diskQuestions, _waiting, services.alerts })
    , _bookmarkController(_bookmarkStore, _twinleaf, _fileIcons, _diskQuestions,
                          { services.alerts, services.openPanel, services.openDialogs },
                          &_mainWindow)
    , _imageBrowser(_twinleaf, _twinleaf, _twinleaf, _kinds,
                    { services.openPanel, services.openDialogs, services.foreignFiles },
                    &_mainWindow)
    , _favoriteApplicationsController(_bookmarkStore, _twinleaf, _applicationIcons,
                                      services.openPanel)
    , _preferencesController(services.defaults,
                             { _mainModel, _twinleaf, _windowController,
                               _favoriteApplicationsController, services.openPanel,
                               services.openDialogs },
                             &_mainWindow)
    , _spotlightSearchController({ _bus, services.defaults, services.alerts, services.openDialogs,
                                   services.workspace, services.metadataIndex, _waiting },
                                 { _twinleaf, _kinds, _fileIcons }, &_mainWindow)
    , _terminalController(
          services.programs, _twinleaf, services.openDialogs,
          [this] { return _windowController.getCurrentPath(); }, &_mainWindow)
    , _textEditing(_windowController, _mainModel,
                   { _twinleaf, services.workspace, _waiting, services.alerts })
    , _viewer({ _waiting, services.openDialogs, services.foreignFiles }, &_mainWindow)
    , _trashController(services.workspace.trashCan(), _twinleaf, _kinds, services.alerts,
                       services.openDialogs, &_mainWindow)
    , _toolbar(_commands, _bookmarkStore, _twinleaf, _applicationIcons, services.defaults)
    , _updateCheck(services.versionServer, _twinleaf, services.alerts,
                   { BundleInfo::versionFileAddress(), BundleInfo::downloadAddress() },
                   BundleInfo::version())
{
    connectAll();
}

Application::~Application()
{
    // The session's end may have ended the event loop under an open question.
    const Alerts::Silence silence(_services.alerts);
    stopWork();
    // A sheet that goes gives up the keyboard; the toolbar is gone by then.
    disconnect(qApp, &QApplication::focusChanged, &_commands, nullptr);
}

void Application::start()
{
    adoptStoredWords(_services.defaults);
    // Shown first: a disk that takes its time is waited for in a window that says so.
    _toolbar.setupToolbarForWindow(_mainWindow);
    restoreFrame(_mainWindow, _services.defaults);
    const bool anyGiven = _line.folders.left || _line.folders.right;
    fileList(anyGiven ? Side::Left : lastActivePane(_services.defaults)).setFocus();
    _mainWindow.show();
    // What an interrupted run set aside is back before it is listed.
    _twinleaf.settleInterruptedWork(_waiting);
    takeFolders();
    awakeAll();
    _hasStarted = true;
    _twinleaf.tellInterruptedWork();
    _showOnRequest.begin();
    if (const QString notice = _services.defaults.notice(); !notice.isEmpty())
        _windowController.showNotice(notice);
}

void Application::takeFolders()
{
    for (const Side side : { Side::Left, Side::Right })
        if (const auto &path = _line.folders[side]) {
            const auto folder =
                _waiting.forAnswer(*path, [path = *path] { return startFolder(path); });
            _mainModel.setStartFolder(
                side, folder.value_or(MainModel::StartFolder { PathText::homeFolder() }));
        }
}

void Application::quit()
{
    if (_stoppingWork
        && _services.alerts.ask(Alert::question(
               localized("The work has not come to an end yet. Quit without waiting for it?"),
               localized("What is unfinished is settled at the next start.")))
            == Alert::Yes)
        leaveWork();
    if (_quitting)
        return;
    _quitting = true;
    if (_twinleaf.anyRunning()
        && _services.alerts.ask(Alert::question(
               localized(
                   "A file operation is still running. Stop it after the current item and quit?"),
               _twinleaf.describedRuns()))
            != Alert::Yes) {
        _quitting = false;
        return;
    }
    _showOnRequest.end();
    Q_EMIT isEnding();
    _mainWindow.setEnabled(false);
    // Its sheet tells what is waited for; and as it keeps the close box from the window, there must
    // be a way to ask again from there.
    _workingSheet.setEnabled(true);
    if (_workingSheet.isWorkingSheetVisible())
        _workingSheet.cancelWorkingSheet();
    save(); // the end of the work may be long in coming
    _stoppingWork = true;
    stopAnsweredWork();
    save();
    QCoreApplication::exit(0);
}

bool Application::end()
{
    const Alerts::Silence silence(_services.alerts);
    if (!_leavesWork)
        stopWork();
    _services.defaults.synchronize();
    const QDeadlineTimer deadline(Readings::Patience);
    const bool followingEnded = _folderRefresh.end(deadline);
    const bool countingEnded = _folderSize.end(deadline);
    const bool readingEnded = _infoSheetController.end(deadline);
    const bool detailsEnded = _spotlightSearchController.end(deadline);
    const bool commandsEnded = _terminalController.end(QDeadlineTimer(CommandRuns::Patience));
    const bool trashEnded = _trashController.end(deadline);
    const bool picturesEnded = _imageBrowser.end(deadline);
    const bool viewingEnded = _viewer.end(deadline);
    return followingEnded && countingEnded && readingEnded && detailsEnded && commandsEnded
        && picturesEnded && viewingEnded && trashEnded && !_twinleaf.anyRunning()
        && !Waiting::anyLost() && !DiskQuestions::anyUnderWay();
}

void Application::powerOff()
{
    // At each notice: an end that was announced may have been called off since.
    // A second one, while the work is stopped for the first; or there is no work yet, and what the
    // start waits for may still come.
    if (_endingWork || !_hasStarted)
        return save();
    const QScopedValueRollback ending(_endingWork, true);
    // Nobody is there to answer any more, nor to close a sheet that another program asks for.
    const Alerts::Silence silence(_services.alerts);
    _showOnRequest.end();
    const auto resume = qScopeGuard([this] { // once it is clear that the end was called off
        QTimer::singleShot(0, this, [this] {
            if (!_quitting)
                _showOnRequest.begin();
        });
    });
    save();
    _twinleaf.stopAll();
    _waiting.giveUp();
    // A worker behind a question ends when the question's own event loop has, and one that waits
    // for its turn when the wait is over; see ~Application.
    if (!_services.openDialogs.anyOpen() && !_waiting.isWaiting())
        stopAnsweredWork();
}

bool Application::commitSession(const std::function<bool()> &mayAsk)
{
    save();
    // Whether the session ends or is only written down nobody tells: without leave the work goes on
    // until the end comes.
    if (!_twinleaf.anyRunning() || _endingWork || _quitting || Arrivals::areHeld() || !mayAsk())
        return true;
    if (_services.alerts.ask(Alert::question(
            localized("A file operation is still running. Stop it after the current item and end "
                      "the session?"),
            _twinleaf.describedRuns()))
        != Alert::Yes)
        return false;
    powerOff();
    return true;
}

ExpandSelection Application::askForPattern(const QString &title)
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    _expandSelection = ExpandSelectionSheet(title, _expandSelection, &_mainWindow).getInput();
    return _expandSelection;
}

QString Application::askForFolder(const QString &prompt, const QString &path)
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    InputSheet sheet(prompt, path, _diskQuestions, &_mainWindow);
    return sheet.getString();
}

void Application::showAbout()
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    About about({ .name = BundleInfo::name(),
                  .version = BundleInfo::versionLine(),
                  .copyright = BundleInfo::copyright(),
                  .donationAddress = BundleInfo::donationAddress(),
                  .webAddress = BundleInfo::webAddress(),
                  .mailAddress = BundleInfo::mailAddress() },
                _twinleaf, &_mainWindow);
    about.run();
}

void Application::customizeToolbar()
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    ToolbarCustomization(_toolbar, &_mainWindow).run();
}

void Application::noteState()
{
    if (_hasStarted) // until then what is stored is what the panes are to show
        _bus.post(ApplicationWillTerminate, {});
}

void Application::save()
{
    noteState();
    _services.defaults.synchronize();
}

void Application::stopWork()
{
    _twinleaf.stopAll();
    _twinleaf.drain();
}

void Application::stopAnsweredWork()
{
    QTimer looks;
    looks.setSingleShot(true);
    looks.setInterval(BetweenLooks);
    looks.callOnTimeout(this, [this, &looks] {
        if (_services.openDialogs.anyOpen() || _twinleaf.isWorkAnswered(_waiting))
            looks.start();
        else
            leaveWork();
    });
    looks.start();
    stopWork();
}

void Application::leaveWork()
{
    _leavesWork = true;
    _twinleaf.abandon();
}
