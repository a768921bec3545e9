#pragma once

#include "model/Side.h"
#include "settings/SettingsKeys.h"

#include <QObject>

#include <memory>

class FavoriteApplicationsController;
class FileQueries;
class MainModel;
class OpenDialogs;
class OpenPanel;
class PaneWindow;
class PreferencesSheet;
class QWidget;
class UserDefaults;

// The preferences: what their sheet comes up with, and what becomes of it. The main window hears by
// signals what it has to set up anew. Main thread.
class PreferencesController final : public QObject {
    Q_OBJECT

public:
    struct Outlets {
        MainModel &mainModel;
        const FileQueries &twinleaf;
        const PaneWindow &windowController;
        FavoriteApplicationsController &favorites;
        OpenPanel &openPanel;
        OpenDialogs &openDialogs;
    };
    PreferencesController(UserDefaults &defaults, const Outlets &outlets, QWidget *mainWindow);
    ~PreferencesController() override;

    void showPreferencesSheet();
    void saveLastPathsClicked();
    void searchForLeftPathClicked() { searchForPathClicked(Side::Left); }
    void searchForRightPathClicked() { searchForPathClicked(Side::Right); }
    void restoreDefaults();
    void readClassicKeys();
    void writeClassicKeys();
    void readInfoBarColors();
    void writeInfoBarColors();
    void okClicked();

Q_SIGNALS:
    // With OK, in the order of the steps; the first two also when a setting of theirs is changed.
    void dateFormattersToSet();
    void pathNavigatorsToSetUp();
    void infoBarColorsToSet();
    void openWithFavoriteApplicationsToSet();
    void toolbarToSetUp();
    void windowLookToSet();
    void toolTipsToSet();

private:
    void chooseLeftOutClicked();
    void searchForPathClicked(Side side);
    void setRealPath(Side side, const QString &path);
    void settingWritten(Settings::Key key);
    void readLists();
    void showFavorites();

    UserDefaults &defaults;
    const Outlets _outlets;
    QWidget *mainWindow; // not owned
    std::unique_ptr<PreferencesSheet> preferencesSheet; // while it is open
    PerSide<QString> _realPath; // of the start folders; their fields show them as paths are shown
    bool _listsToRead = false; // a setting changed what they show
};
