#include "sheets/preferences/InfoBarsPage.h"

#include "base/Localized.h"
#include "widgets/ColorWell.h"

InfoBarsPage::InfoBarsPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
    , infoBarFrameColor(new ColorWell(this))
    , infoBarFontColor(new ColorWell(this))
{
    for (ColorWell *well : { infoBarFrameColor, infoBarFontColor })
        well->setAutoDefault(false);
    addRow(localized("Frame color:"), infoBarFrameColor);
    addRow(localized("Text color:"), infoBarFontColor);
    finish();
}
