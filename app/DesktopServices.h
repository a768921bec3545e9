#pragma once

#include "app/Services.h"
#include "platform/desktop/ColorScheme.h"
#include "platform/desktop/DesktopOpenPanel.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/HttpVersionServer.h"
#include "platform/desktop/PolkitAuthorization.h"
#include "platform/OpenDialogs.h"
#include "settings/UserDefaults.h"
#include "widgets/AlertSheets.h"

// The real ones, of the desktop this program runs on.
class DesktopServices final {
public:
    DesktopServices();

    Services services();
    void setMainWindow(QWidget *window); // over which alerts and panels open

private:
    ColorScheme _colorScheme;
    OpenDialogs _openDialogs;
    UserDefaults _defaults;
    AlertSheets _alerts { _openDialogs };
    DesktopOpenPanel _openPanel { _openDialogs };
    DesktopPrograms _programs;
    DesktopWorkspace _workspace;
    HttpVersionServer _versionServer;
    PolkitAuthorization _authorization { _openDialogs };
};
