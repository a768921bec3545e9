#include "settings/CalendarFormat.h"

#include "settings/SettingsKeys.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array monthNames { "January"_L1,   "February"_L1, "March"_L1,    "April"_L1,
                                  "May"_L1,       "June"_L1,     "July"_L1,     "August"_L1,
                                  "September"_L1, "October"_L1,  "November"_L1, "December"_L1 };
constexpr std::array weekDayNames { "Sunday"_L1,   "Monday"_L1, "Tuesday"_L1, "Wednesday"_L1,
                                    "Thursday"_L1, "Friday"_L1, "Saturday"_L1 };

// More than any sound format has. Stored ones may name each other, each time many times over.
constexpr int MostConversions = 200;

QString number(int value, int width)
{
    return QString::number(value).rightJustified(width, u'0');
}

QString zoneOffset(const QDateTime &date)
{
    const int minutes = date.offsetFromUtc() / 60;
    return (minutes < 0 ? u'-' : u'+') + number(qAbs(minutes) / 60, 2)
        + number(qAbs(minutes) % 60, 2);
}

// Writes one date by formats that may refer to one another.
class Writer {
public:
    Writer(const QDateTime &date, const QVariantMap &locale)
        : _date(date)
        , _day(date.date())
        , _time(date.time())
        , _locale(locale)
    {
    }

    QString text(QStringView format) const;

private:
    QString conversion(QChar letter, int width, QStringView original) const;
    QString name(Settings::Key key, int index, const QString &english) const;
    QString byLocale(Settings::Key key, const QString &otherwise) const;

    const QDateTime _date;
    const QDate _day;
    const QTime _time;
    const QVariantMap &_locale;
    mutable int _depth = 0;
    mutable int _conversions = 0;
};

QString Writer::text(QStringView format) const
{
    QString text;
    for (qsizetype at = 0; at < format.size(); ++at) {
        if (format[at] != u'%') {
            text += format[at];
            continue;
        }
        if (++_conversions > MostConversions)
            break;
        const qsizetype start = at++;
        int width = 0;
        for (; at < format.size() && format[at] >= u'0' && format[at] <= u'9'; ++at)
            width = qMin(width * 10 + format[at].digitValue(), 99);
        if (at == format.size())
            return text + format.sliced(start).toString();
        text += conversion(format[at], width, format.sliced(start, at - start + 1));
    }
    return text;
}

QString Writer::conversion(QChar letter, int width, QStringView original) const
{
    const auto padded = [width](int value, int usual) {
        return number(value, width > 0 ? width : usual);
    };
    const int month = _day.month() - 1;
    const int weekDay = _day.dayOfWeek() % 7; // Sunday first
    switch (letter.unicode()) {
    case u'%':
        return u"%"_s;
    case u'a':
        return name(Settings::ShortWeekDayNames, weekDay, QString(weekDayNames[weekDay]).left(3));
    case u'A':
        return name(Settings::WeekDayNames, weekDay, weekDayNames[weekDay]);
    case u'b':
    case u'h':
        return name(Settings::ShortMonthNames, month, QString(monthNames[month]).left(3));
    case u'B':
        return name(Settings::MonthNames, month, monthNames[month]);
    case u'c':
        return byLocale(Settings::TimeDateFormat, u"%X %x"_s);
    case u'd':
        return padded(_day.day(), 2);
    case u'D':
        return text(u"%m/%d/%y");
    case u'e':
        return padded(_day.day(), 1);
    case u'F':
        return padded(_time.msec(), 3);
    case u'H':
        return padded(_time.hour(), 2);
    case u'I':
        return padded((_time.hour() + 11) % 12 + 1, 2);
    case u'j':
        return padded(_day.dayOfYear(), 3);
    case u'm':
        return padded(_day.month(), 2);
    case u'M':
        return padded(_time.minute(), 2);
    case u'n':
        return u"\n"_s;
    case u'p':
        return name(Settings::AmPmDesignation, _time.hour() < 12 ? 0 : 1,
                    _time.hour() < 12 ? u"AM"_s : u"PM"_s);
    case u'R':
        return text(u"%H:%M");
    case u'S':
        return padded(_time.second(), 2);
    case u't':
        return u"\t"_s;
    case u'T':
        return text(u"%H:%M:%S");
    case u'w':
        return padded(weekDay, 1);
    case u'x':
        return byLocale(Settings::DateFormat, u"%Y-%m-%d"_s);
    case u'X':
        return byLocale(Settings::TimeFormat, u"%H:%M:%S"_s);
    case u'y':
        return padded(qAbs(_day.year()) % 100, 2);
    case u'Y':
        return padded(_day.year(), 1);
    case u'z':
        return zoneOffset(_date);
    case u'Z':
        return _date.timeZoneAbbreviation();
    default:
        return original.toString();
    }
}

QString Writer::name(Settings::Key key, int index, const QString &english) const
{
    const QString name = _locale.value(key).toStringList().value(index);
    return name.isEmpty() ? english : name;
}

QString Writer::byLocale(Settings::Key key, const QString &otherwise) const
{
    const QString format = _locale.value(key).toString();
    // A stored format may name itself: two steps are as deep as a sound one goes.
    if (format.isEmpty() || _depth >= 2)
        return text(otherwise);
    ++_depth;
    QString written = text(format);
    --_depth;
    return written;
}

} // namespace

QString CalendarFormat::text(const QDateTime &date, const QString &format,
                             const QVariantMap &locale)
{
    if (!date.isValid())
        return {};
    return format.isEmpty() ? description(date) : Writer(date.toLocalTime(), locale).text(format);
}

QString CalendarFormat::description(const QDateTime &date)
{
    if (!date.isValid())
        return {};
    const QDateTime local = date.toLocalTime();
    return number(local.date().year(), 4) + Writer(local, {}).text(u"-%m-%d %H:%M:%S %z");
}
