#include "settings/CalendarFormat.h"
#include "settings/DateText.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A Sunday, with every number of one digit.
const QDateTime date { QDate(2009, 2, 1), QTime(7, 5, 3, 42), Qt::UTC };

const QVariantMap german {
    { Settings::AmPmDesignation, QStringList { u"vorm."_s, u"nachm."_s } },
    { Settings::WeekDayNames, QVariantList { u"Sonntag"_s, u"Montag"_s } },
    { Settings::ShortWeekDayNames, QVariantList { u"So"_s, u"Mo"_s } },
    { Settings::MonthNames, QVariantList { u"Januar"_s, u"Februar"_s } },
    { Settings::ShortMonthNames, QVariantList { u"Jan."_s, u"Feb."_s } },
};

void inZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

} // namespace

class tst_CalendarFormat : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { inZone("UTC"); }
    void conversions();
    void hoursAndZone();
    void namesComeFromTheLocale();
    void datesAreWrittenAsStored();
};

void tst_CalendarFormat::conversions()
{
    const QList<std::pair<QString, QString>> cases {
        { u"%d.%m.%y %H:%M"_s, u"01.02.09 07:05"_s },
        { u"%A, %B %e, %Y"_s, u"Sunday, February 1, 2009"_s },
        { u"%a %b"_s, u"Sun Feb"_s },
        { u"%1m/%1d %1H"_s, u"2/1 7"_s },
        { u"%S.%F"_s, u"03.042"_s }, // milliseconds, no date
        { u"%j %w"_s, u"032 0"_s },
        { u"%z"_s, u"+0000"_s },
        { u"100%%d"_s, u"100%d"_s },
        { u"%Q %5K"_s, u"%Q %5K"_s },
        { u"%d %1"_s, u"01 %1"_s },
        { u"%d \u00B7 \u65E5"_s, u"01 \u00B7 \u65E5"_s },
        { u"%c"_s, u"07:05:03 2009-02-01"_s }, // the locale's own, and none there
    };
    for (const auto &[format, text] : cases)
        QCOMPARE(CalendarFormat::text(date, format, {}), text);
}

void tst_CalendarFormat::hoursAndZone()
{
    const QList<std::tuple<const char *, int, QString>> cases {
        { "UTC", 0, u"12 AM +0000 UTC"_s },      { "UTC", 11, u"11 AM +0000 UTC"_s },
        { "UTC", 12, u"12 PM +0000 UTC"_s },     { "UTC", 23, u"11 PM +0000 UTC"_s },
        { "IST-5:30", 7, u"12 PM +0530 IST"_s }, { "NST3:30", 7, u"03 AM -0330 NST"_s },
    };
    for (const auto &[zone, hour, text] : cases) {
        inZone(zone);
        const QDateTime then(date.date(), QTime(hour, 5), Qt::UTC);
        QCOMPARE(CalendarFormat::text(then, u"%I %p %z %Z"_s, {}), text);
    }
}

void tst_CalendarFormat::namesComeFromTheLocale()
{
    QCOMPARE(CalendarFormat::text(date, u"%A %a %B %b %p"_s, german),
             u"Sonntag So Februar Feb. vorm."_s);
    // Lists that are too short are filled up with English names.
    QCOMPARE(CalendarFormat::text(date.addDays(31), u"%A %b"_s, german), u"Wednesday Mar"_s);
    // A format that names itself ends.
    const QVariantMap rings { { Settings::TimeDateFormat, u"<%c>"_s },
                              { Settings::DateFormat, u"%x"_s } };
    QVERIFY(CalendarFormat::text(date, u"%c"_s, rings).startsWith(u"<<"_s));
    QCOMPARE(CalendarFormat::text(date, u"%x"_s, rings), u"2009-02-01"_s);
}

void tst_CalendarFormat::datesAreWrittenAsStored()
{
    const TestFolder folder;
    UserDefaults defaults(folder.path(u"settings.plist"_s), german);
    // Without a format the plain description; long, two halves and a blank.
    inZone("CET-1");
    QCOMPARE(DateText(defaults).getLocalizedShortDateAndTime(date), u"2009-02-01 08:05:03 +0100"_s);
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime({}), u" "_s);
    inZone("UTC");
    defaults.setValue(Settings::DateFormat, u"%A"_s);
    defaults.setValue(Settings::TimeFormat, u"%I %p"_s);
    // Kept: the time's names need a format that the time does not use.
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 AM"_s);
    defaults.setValue(Settings::TimeDateFormat, u"%c"_s);
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 vorm."_s);
}

QTEST_GUILESS_MAIN(tst_CalendarFormat)
#include "tst_CalendarFormat.moc"
