#pragma once

#include "app/CommandLine.h"
#include "commands/UpdateCheck.h"
#include "model/MainModel.h"
#include "model/MessageBus.h"
#include "operations/Twinleaf.h"
#include "platform/desktop/ColorScheme.h"
#include "platform/desktop/DesktopOpenPanel.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/HttpVersionServer.h"
#include "platform/OpenDialogs.h"
#include "settings/UserDefaults.h"
#include "views/PaneDragAndDrop.h"
#include "views/TableViewDataSources.h"
#include "widgets/AlertSheets.h"
#include "widgets/FileKinds.h"
#include "window/MainWindowLayout.h"
#include "window/WindowController.h"

#include <QObject>

// Owns every long-lived object, in the order of construction, and sees to the program's end.
class Application final : public QObject {
    Q_OBJECT

public:
    explicit Application(const CommandLine &line);
    ~Application() override;

    void start();

    // Asks when work is under way; then stops it between two items, saves and ends the event loop.
    void quit();

private:
    void connectAll(); // Wiring.cpp
    void awakeAll(); // Wiring.cpp
    void addHelpItems(); // Wiring.cpp
    void showAbout();
    void powerOff();
    void save();
    void stopWork();

    ColorScheme _colorScheme;
    OpenDialogs _openDialogs;
    UserDefaults _defaults;
    MessageBus _bus;
    AlertSheets _alerts;
    DesktopOpenPanel _openPanel;
    DesktopPrograms _programs;
    DesktopWorkspace _workspace;
    FileKinds _kinds;
    Twinleaf _twinleaf;
    MainModel _mainModel;
    MainWindowLayout _mainWindow;
    TableViewDataSourceLeft _leftSource;
    TableViewDataSourceRight _rightSource;
    WindowController _windowController;
    PaneDragAndDrop _leftDrops;
    PaneDragAndDrop _rightDrops;
    HttpVersionServer _versionServer;
    UpdateCheck _updateCheck;
    bool _quitting = false;
};
