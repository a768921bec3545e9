#pragma once

#include "model/Side.h"
#include "sheets/preferences/PreferencesPage.h"

class QLineEdit;

// The folders that the panes show at the next start.
class StartFoldersPage final : public PreferencesPage {
    Q_OBJECT

public:
    StartFoldersPage(UserDefaults &defaults, const Mnemonics &taken);

    QCheckBox *saveLastPaths; // outlets
    PerSide<QLineEdit *> lastPath;
    PerSide<QPushButton *> searchButton;
};
