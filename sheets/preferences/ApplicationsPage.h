#pragma once

#include "sheets/preferences/PreferencesPage.h"

class FavoriteApplicationsController;

// The favourite applications.
class ApplicationsPage final : public PreferencesPage {
    Q_OBJECT

public:
    ApplicationsPage(UserDefaults &defaults, const Mnemonics &taken,
                     FavoriteApplicationsController &favorites);
};
