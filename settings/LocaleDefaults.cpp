#include "settings/LocaleDefaults.h"

#include "settings/SettingsKeys.h"

#include <QVariantList>

#include <algorithm>
#include <functional>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

struct Conversion {
    QLatin1StringView letters;
    QLatin1StringView calendar;
};

// Longer runs of a letter first. The zone has no place in a list of dates.
constexpr Conversion conversions[] = {
    { "dddd"_L1, "%A"_L1 }, { "ddd"_L1, "%a"_L1 }, { "dd"_L1, "%d"_L1 },  { "d"_L1, "%e"_L1 },
    { "MMMM"_L1, "%B"_L1 }, { "MMM"_L1, "%b"_L1 }, { "MM"_L1, "%m"_L1 },  { "M"_L1, "%1m"_L1 },
    { "yyyy"_L1, "%Y"_L1 }, { "yy"_L1, "%y"_L1 },  { "HH"_L1, "%H"_L1 },  { "H"_L1, "%1H"_L1 },
    { "hh"_L1, "%I"_L1 },   { "h"_L1, "%1I"_L1 },  { "mm"_L1, "%M"_L1 },  { "m"_L1, "%1M"_L1 },
    { "ss"_L1, "%S"_L1 },   { "s"_L1, "%1S"_L1 },  { "zzz"_L1, "%F"_L1 }, { "z"_L1, "%F"_L1 },
    { "tttt"_L1, ""_L1 },   { "ttt"_L1, ""_L1 },   { "tt"_L1, ""_L1 },    { "t"_L1, ""_L1 },
    { "AP"_L1, "%p"_L1 },   { "ap"_L1, "%p"_L1 },  { "Ap"_L1, "%p"_L1 },  { "aP"_L1, "%p"_L1 },
    { "A"_L1, "%p"_L1 },    { "a"_L1, "%p"_L1 },
};

// Locale data has narrow no-break blanks, which many fonts lack.
QString plainBlanks(QString text)
{
    return text.replace(QChar(0x202F), u' ').replace(QChar(QChar::Nbsp), u' ');
}

// A format of QLocale as one of calendar conversions.
QString calendarFormat(const QString &format)
{
    QString result;
    bool quoted = false;
    bool halfDays = false;
    QStringView rest(format);
    while (!rest.isEmpty()) {
        if (rest.startsWith(u'\'')) {
            const bool isQuote = rest.startsWith("''"_L1);
            if (isQuote)
                result += u'\'';
            else
                quoted = !quoted;
            rest = rest.sliced(isQuote ? 2 : 1);
            continue;
        }
        const auto *found = std::find_if(
            std::begin(conversions), std::end(conversions),
            [&](const Conversion &each) { return !quoted && rest.startsWith(each.letters); });
        if (found == std::end(conversions)) {
            result += rest.front() == u'%' ? u"%%"_s : QString(rest.front());
            rest = rest.sliced(1);
            continue;
        }
        result += found->calendar;
        halfDays = halfDays || found->calendar == "%p"_L1;
        rest = rest.sliced(found->letters.size());
    }
    if (!halfDays)
        result.replace("%1I"_L1, "%1H"_L1).replace("%I"_L1, "%H"_L1);
    result.remove("()"_L1); // around the zone
    return plainBlanks(result).trimmed();
}

QVariantList names(int count, const std::function<QString(int)> &nameOf)
{
    QVariantList list;
    for (int i = 0; i < count; ++i)
        list.append(plainBlanks(nameOf(i)));
    return list;
}

// The lists show minutes; only the C locale's short time has seconds.
QString withoutSeconds(QString format)
{
    return format.remove(":%S"_L1);
}

} // namespace

QVariantMap localeDefaults(const QLocale &locale)
{
    const auto date = [&](QLocale::FormatType type) {
        return calendarFormat(locale.dateFormat(type));
    };
    const auto time = [&](QLocale::FormatType type) {
        return calendarFormat(locale.timeFormat(type));
    };
    const auto month = [&](QLocale::FormatType type) {
        return names(12, [&](int i) { return locale.monthName(i + 1, type); });
    };
    const auto weekDay = [&](QLocale::FormatType type) {
        return names(7, [&](int i) { return locale.dayName(i == 0 ? 7 : i, type); });
    };
    const bool isNone = locale.language() == QLocale::C; // whose texts are English
    return {
        { Settings::LanguageName,
          QLocale::languageToString(isNone ? QLocale::English : locale.language()) },
        { Settings::ShortTimeDateFormat,
          date(QLocale::ShortFormat) + u' ' + withoutSeconds(time(QLocale::ShortFormat)) },
        { Settings::DateFormat, date(QLocale::LongFormat) },
        { Settings::TimeFormat, time(QLocale::LongFormat) },
        { Settings::TimeDateFormat, date(QLocale::LongFormat) + u' ' + time(QLocale::LongFormat) },
        { Settings::AmPmDesignation,
          QVariantList { plainBlanks(locale.amText()), plainBlanks(locale.pmText()) } },
        { Settings::MonthNames, month(QLocale::LongFormat) },
        { Settings::ShortMonthNames, month(QLocale::ShortFormat) },
        { Settings::WeekDayNames, weekDay(QLocale::LongFormat) },
        { Settings::ShortWeekDayNames, weekDay(QLocale::ShortFormat) },
    };
}
