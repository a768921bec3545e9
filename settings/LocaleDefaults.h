#pragma once

#include <QLocale>
#include <QVariantMap>

// The global domain of the settings, made from the user's locale: date formats in calendar-format
// conversions ("%d.%m.%y %H:%M") under the keys NSShortTimeDateFormatString, NSDateFormatString,
// NSTimeFormatString, NSTimeDateFormatString, and the names NSAMPMDesignation, NSMonthNameArray,
// NSShortMonthNameArray, NSWeekDayNameArray, NSShortWeekDayNameArray (Sunday first).
QVariantMap localeDefaults(const QLocale &locale = QLocale::system());
