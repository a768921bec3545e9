#pragma once

#include <QDateTime>
#include <QVariantMap>

// A date as text by a calendar format ("%d.%m.%y %H:%M"): the conversions of strftime(3) with %F as
// milliseconds, %e without padding, %1d for a day without one and %z as +HHMM; names of months,
// days and AM/PM from the locale dictionary under the keys of the global domain. An empty format
// gives the plain description "YYYY-MM-DD HH:MM:SS +HHMM"; an invalid date gives "". At
// most 200 conversions are done; the text ends there. Main thread.
namespace CalendarFormat {

QString text(const QDateTime &date, const QString &format, const QVariantMap &locale);
QString description(const QDateTime &date);

} // namespace CalendarFormat
