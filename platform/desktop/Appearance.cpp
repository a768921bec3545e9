#include "platform/desktop/Appearance.h"

using namespace Qt::StringLiterals;

Appearance appearanceOf(const AppearanceSigns &signs)
{
    const QString theme = signs.theme.toLower();
    // The two that GTK itself brings; the inverse one is white on black.
    const bool contrastTheme = theme.startsWith("highcontrast"_L1);
    const bool darkTheme = signs.darkVariant || theme.startsWith("highcontrastinverse"_L1)
        || theme.endsWith("-dark"_L1) || theme.endsWith(":dark"_L1) || theme.contains("-dark-"_L1);
    const bool isDark = signs.scheme == AppearanceSigns::NoWish
        ? darkTheme
        : signs.scheme == AppearanceSigns::PrefersDark;
    return { isDark, signs.contrast || contrastTheme };
}
