#pragma once

#include "sheets/preferences/PreferencesPage.h"

class QSpinBox;

// What the program asks, and how the window and its path navigators look.
class GeneralPage final : public PreferencesPage {
    Q_OBJECT

public:
    GeneralPage(UserDefaults &defaults, const Mnemonics &taken);

private:
    void addNavigatorRows();

    QComboBox *navigatorsSize = nullptr;
    QComboBox *navigatorsFontStyle = nullptr;
    QSpinBox *navigatorsFontSize = nullptr;
};
