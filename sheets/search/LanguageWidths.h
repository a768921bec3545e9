#pragma once

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

// The width of a column in the languages for which one was chosen; 0 in any other: it stays as it
// is. Pixels.
inline int columnWidthForLanguage(const UserDefaults &defaults, int english, int german)
{
    const QString language = defaults.string(Settings::LanguageName).value_or(QString());
    if (language == QLatin1StringView("English"))
        return english;
    return language == QLatin1StringView("German") ? german : 0;
}
