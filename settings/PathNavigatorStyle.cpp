#include "settings/PathNavigatorStyle.h"

#include "base/Localized.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

#include <algorithm>

namespace {

QString fontStyle(const UserDefaults &defaults)
{
    return defaults.string(Settings::PathNavigatorsFontStyle).value_or(QString());
}

} // namespace

bool PathNavigatorStyle::hasFontStyle(const UserDefaults &defaults)
{
    const QString style = fontStyle(defaults);
    return style == localized("Normal") || style == localized("Bold");
}

PathNavigatorStyle PathNavigatorStyle::fromDefaults(const UserDefaults &defaults)
{
    PathNavigatorStyle style { .mini =
                                   defaults.string(Settings::PathNavigatorsSize).value_or(QString())
                                   == localized("Mini") };
    const int size = defaults.integer(Settings::PathNavigatorsFontSize).value_or(PlainFontSize);
    if (hasFontStyle(defaults)) {
        style.bold = fontStyle(defaults) == localized("Bold");
        // Letters higher than the window would be no path, and those without a size none at all.
        style.fontSize = size > 0 ? std::min(size, LargestFontSize) : PlainFontSize;
    }
    return style;
}
