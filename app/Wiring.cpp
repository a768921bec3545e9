#include "app/Application.h"

#include "base/Localized.h"

// Who is connected to whom, and in which order the objects wake up.

void Application::connectAll()
{
    _alerts.setParent(&_mainWindow);
    _openPanel.setParent(&_mainWindow);
    _mainModel.setWindowController(&_windowController);
    _mainModel.setTwinleaf(&_twinleaf);
    _twinleaf.setMainModel(&_mainModel);
    _twinleaf.setWindowController(&_windowController, &_windowController.workingSheet());
    _twinleaf.setArchiveSheet(&_windowController.archiveSheet());

    for (PaneDataSource *source : { static_cast<PaneDataSource *>(&_leftSource),
                                    static_cast<PaneDataSource *>(&_rightSource) })
        connect(source, &PaneDataSource::selectionDidChange, &_windowController,
                &WindowController::setFileInfoBar);

    connect(&_workspace, &Workspace::volumeDidMount, &_windowController,
            &WindowController::volumeDidMount);
    connect(&_workspace, &Workspace::volumeDidUnmount, &_windowController,
            &WindowController::volumeDidUnmount);
    connect(&_workspace, &Workspace::willPowerOff, this, &Application::powerOff);
    connect(&_windowController, &WindowController::terminateRequested, this, &Application::quit);
    addHelpItems();
}

void Application::addHelpItems()
{
    MenuBar &menus = _windowController.menus();
    if (_updateCheck.isOffered())
        menus.addHelp(localized("Check for newer version..."),
                      [this] { _updateCheck.checkForNewerVersion(); });
    menus.addHelp(localized("About Twinleaf"), [this] { showAbout(); });
}

void Application::awakeAll()
{
    _mainModel.awakeFromNib();
    _leftSource.awakeFromNib();
    _rightSource.awakeFromNib();
    _windowController.awakeFromNib();
}
