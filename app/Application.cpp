#include "app/Application.h"

#include "base/Localized.h"
#include "settings/BundleInfo.h"
#include "settings/LocaleDefaults.h"
#include "sheets/About.h"
#include "views/TableViews.h"

#include <QCoreApplication>

Application::Application(const CommandLine &line)
    : _defaults(BundleInfo::getBundleIdentifier(), localeDefaults())
    , _alerts(_openDialogs)
    , _openPanel(_openDialogs)
    , _twinleaf(_bus, _defaults, _alerts, _programs, _workspace, _kinds, _openDialogs)
    , _mainModel(_bus, _defaults, _alerts, _twinleaf, _twinleaf, _kinds)
    , _mainWindow(_bus, _mainModel, _defaults)
    , _leftSource(*_mainWindow.leftFileList, _mainModel, _bus, _defaults)
    , _rightSource(*_mainWindow.rightFileList, _mainModel, _bus, _defaults)
    , _windowController(_mainWindow, _bus, _mainModel, _twinleaf,
                        { _defaults, _workspace, _openPanel, _alerts, _openDialogs })
    , _leftDrops(*_mainWindow.leftFileList, _mainModel, _windowController, _twinleaf, _alerts)
    , _rightDrops(*_mainWindow.rightFileList, _mainModel, _windowController, _twinleaf, _alerts)
    , _updateCheck(_versionServer, _twinleaf, _alerts,
                   { BundleInfo::versionFileAddress(), BundleInfo::downloadAddress() },
                   BundleInfo::version())
{
    for (const Side side : { Side::Left, Side::Right })
        if (const auto &folder = line.folders[side])
            _mainModel.setStartFolder(side, *folder);
    connectAll();
}

Application::~Application()
{
    // The session's end may have ended the event loop under an open question.
    const AlertSheets::Silence silence(_alerts);
    stopWork();
}

void Application::start()
{
    // First of all: what an interrupted run set aside is back before it is listed.
    _twinleaf.settleInterruptedWork();
    awakeAll();
    _mainWindow.leftFileList->setFocus();
    _mainWindow.show();
}

void Application::quit()
{
    if (_quitting)
        return;
    _quitting = true;
    if (_twinleaf.anyRunning()
        && _alerts.ask(Alert::question(localized(
               "A file operation is still running. Stop it after the current item and quit?")))
            != Alert::Yes) {
        _quitting = false;
        return;
    }
    _mainWindow.setEnabled(false);
    stopWork();
    save();
    QCoreApplication::exit(0);
}

void Application::powerOff()
{
    // Nobody is there to answer any more.
    const AlertSheets::Silence silence(_alerts);
    save();
    _twinleaf.stopAll();
    // A worker behind a question ends when the question's own event loop has; see ~Application.
    if (!_openDialogs.anyOpen())
        _twinleaf.drain();
}

void Application::showAbout()
{
    const OpenDialogs::Guard guard(_openDialogs);
    About about({ .name = BundleInfo::name(),
                  .version = BundleInfo::versionLine(),
                  .copyright = BundleInfo::copyright(),
                  .donationAddress = BundleInfo::donationAddress(),
                  .webAddress = BundleInfo::webAddress(),
                  .mailAddress = BundleInfo::mailAddress() },
                _twinleaf, &_mainWindow);
    about.run();
}

void Application::save()
{
    _bus.post(ApplicationWillTerminate, {});
    _defaults.synchronize();
}

void Application::stopWork()
{
    _twinleaf.stopAll();
    _twinleaf.drain();
}
