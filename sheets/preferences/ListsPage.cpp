#include "sheets/preferences/ListsPage.h"

#include "base/Localized.h"

ListsPage::ListsPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
{
    addLabel(localized("Items:"));
    addCheckBox(Settings::ShowSpecifiedIcons, true, localized("Show each item's own icon"));
    addCheckBox(Settings::ShowToolTips, true, localized("Show tool tips"));
    addLabel(localized("Links:"));
    addCheckBox(Settings::TraverseLinks, true, localized("Follow symbolic links"));
    addLabel(localized("Dates:"));
    addCheckBox(Settings::UseLongDateFormat, false, localized("Long format"));
    addCheckBox(Settings::DateRightAlignment, false, localized("Align on the right"));
    finish();
}
