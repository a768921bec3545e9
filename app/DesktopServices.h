#pragma once

#include "app/Services.h"
#include "platform/desktop/ColorScheme.h"
#include "platform/desktop/DesktopOpenPanel.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/HttpVersionServer.h"
#include "platform/desktop/PolkitAuthorization.h"
#include "platform/OpenDialogs.h"
#include "platform/ReaderProcess.h"
#include "search/IndexerProcess.h"
#include "search/LocalMetadataIndex.h"
#include "settings/UserDefaults.h"
#include "widgets/AlertSheets.h"

// The real ones, of the desktop this program runs on.
class DesktopServices final {
public:
    DesktopServices();

    Services services();
    void setMainWindow(QWidget *window); // over which alerts and panels open
    void windowStands(); // what does not have to be there for the first paint begins
    // Pictures that are being read are not waited for. Before whatever asked for them ends.
    void stopReading() { _pictureReader.giveUp(); }
    bool end(); // before the program ends; false when a thread does not come back from a disk

private:
    // A person looks at the place where the picture is to come.
    static constexpr std::chrono::seconds PictureLimit { 15 };

    ColorScheme _colorScheme;
    OpenDialogs _openDialogs;
    UserDefaults _defaults;
    AlertSheets _alerts { _openDialogs };
    DesktopOpenPanel _openPanel { _openDialogs };
    DesktopPrograms _programs;
    DesktopWorkspace _workspace;
    HttpVersionServer _versionServer;
    ReaderProcess _pictureReader { PictureLimit };
    PolkitAuthorization _authorization { _openDialogs };
    IndexerProcess _indexer;
    LocalMetadataIndex _metadataIndex { _defaults, &_indexer };
};
