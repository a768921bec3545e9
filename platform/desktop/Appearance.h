#pragma once

#include <QString>

// How a person wants all windows to look.
struct Appearance {
    bool isDark = false;
    bool highContrast = false;

    bool operator==(const Appearance &) const = default;
};

// What the desktop says about it, in as many ways as there are desktops.
struct AppearanceSigns {
    // color-scheme as in org.freedesktop.appearance: no wish, dark, light.
    enum Scheme : unsigned { NoWish, PrefersDark, PrefersLight };

    unsigned scheme = NoWish;
    bool contrast = false; // of the portal, or of the accessibility settings
    bool darkVariant = false; // of the theme
    QString theme {}; // of GTK's programs: a dark one says so in its name

    bool operator==(const AppearanceSigns &) const = default;
};

// The wish in so many words counts before the name of a theme.
Appearance appearanceOf(const AppearanceSigns &signs);
