#pragma once

#include "sheets/preferences/PreferencesPage.h"

class ColorWell;

// The colours of the bars under the lists; stored with OK.
class InfoBarsPage final : public PreferencesPage {
    Q_OBJECT

public:
    InfoBarsPage(UserDefaults &defaults, const Mnemonics &taken);

    ColorWell *infoBarFrameColor; // outlets
    ColorWell *infoBarFontColor;
};
