#include "settings/DateText.h"

#include "settings/CalendarFormat.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

DateText::DateText(const UserDefaults &settings)
    : defaults(settings)
{
}

QString DateText::getLocalizedShortDateAndTime(const QDateTime &date) const
{
    return CalendarFormat::text(date,
                                defaults.string(Settings::ShortTimeDateFormat).value_or(QString()),
                                defaults.dictionaryRepresentation());
}

QString DateText::getLocalizedDateAndTime(const QDateTime &date) const
{
    return CalendarFormat::text(date, defaults.string(Settings::DateFormat).value_or(QString()),
                                defaults.dictionaryRepresentation())
        + u' '
        + CalendarFormat::text(date, defaults.string(Settings::TimeFormat).value_or(QString()),
                               systemDefinedLocale());
}

QVariantMap DateText::systemDefinedLocale() const
{
    QVariantMap locale;
    // Kept: ends at the first value that is missing, so without a format there are no names either.
    for (const Settings::Key key :
         { Settings::TimeDateFormat, Settings::AmPmDesignation, Settings::MonthNames,
           Settings::ShortMonthNames, Settings::WeekDayNames, Settings::ShortWeekDayNames }) {
        if (!defaults.contains(key))
            break;
        locale.insert(key, defaults.value(key));
    }
    return locale;
}
