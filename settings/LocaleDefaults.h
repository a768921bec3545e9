#pragma once

#include <QLocale>
#include <QVariantMap>

// The global domain of the settings, made from the user's locale: date formats in calendar-format
// conversions ("%d.%m.%y %H:%M"), and the names of months, weekdays (Sunday first) and halves of
// the day; under the keys that settings/SettingsKeys.h lists for it.
QVariantMap localeDefaults(const QLocale &locale = QLocale::system());
