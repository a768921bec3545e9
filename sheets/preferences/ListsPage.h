#pragma once

#include "sheets/preferences/PreferencesPage.h"

// What the file lists show.
class ListsPage final : public PreferencesPage {
    Q_OBJECT

public:
    ListsPage(UserDefaults &defaults, const Mnemonics &taken);
};
