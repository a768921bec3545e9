#pragma once

#include "settings/SettingsKeys.h"
#include "widgets/Sheet.h"

class FavoriteApplicationsController;
class InfoBarsPage;
class KeysPage;
class PreferencesPage;
class QTabWidget;
class SearchPage;
class StartFoldersPage;
class UserDefaults;

// The dialog of the preferences, a page for each subject. There is no way back from what is stored
// at once; the rest is stored with OK, and dropped when the sheet is just closed.
class PreferencesSheet final : public Sheet {
    Q_OBJECT

public:
    PreferencesSheet(UserDefaults &defaults, FavoriteApplicationsController &favorites,
                     QWidget *mainWindow);

    KeysPage *keys; // outlets
    InfoBarsPage *infoBars;
    StartFoldersPage *startFolders;
    SearchPage *search;

Q_SIGNALS:
    void settingWritten(Settings::Key key); // of a page

private:
    void addPageKeys();

    QTabWidget *_tabs;
};
