#include "platform/UserDefaults.h"
#include "tests/support/TestFolder.h"
#include "util/CalendarFormat.h"
#include "util/DateText.h"
#include "util/SettingsKeys.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CalendarFormat : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { inZone("UTC"); }
    void conversions_data();
    void conversions();
    void hoursAndZone_data();
    void hoursAndZone();
    void namesComeFromTheLocale();
    void formatThatNamesItselfEnds();
    void noFormatGivesThePlainDescription();
    void longDateIsTwoHalvesAndABlank();
    void localeEndsAtTheFirstMissingValue();

private:
    static void inZone(const char *zone)
    {
        qputenv("TZ", zone);
        tzset();
    }
};

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

} // namespace

void tst_CalendarFormat::conversions_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::newRow("short date") << "%d.%m.%y %H:%M"
                                << "01.02.09 07:05";
    QTest::newRow("long date") << "%A, %B %e, %Y"
                               << "Sunday, February 1, 2009";
    QTest::newRow("short names") << "%a %b"
                                 << "Sun Feb";
    QTest::newRow("one digit is enough") << "%1m/%1d %1H"
                                         << "2/1 7";
    QTest::newRow("day unpadded") << "%e"
                                  << "1";
    QTest::newRow("milliseconds, no date") << "%S.%F"
                                           << "03.042";
    QTest::newRow("day of the year and of the week") << "%j %w"
                                                     << "032 0";
    QTest::newRow("zone") << "%z"
                          << "+0000";
    QTest::newRow("percent sign") << "100%%d"
                                  << "100%d";
    QTest::newRow("unknown stays") << "%Q %5K"
                                   << "%Q %5K";
    QTest::newRow("cut off") << "%d %1"
                             << "01 %1";
    QTest::newRow("other letters stay") << u"%d \u00B7 \u65E5"_s << u"01 \u00B7 \u65E5"_s;
    QTest::newRow("locale's own, none there") << "%c"
                                              << "07:05:03 2009-02-01";
}

void tst_CalendarFormat::conversions()
{
    QFETCH(QString, format);
    QTEST(CalendarFormat::text(date, format, {}), "text");
}

void tst_CalendarFormat::hoursAndZone_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<int>("hour"); // in UTC
    QTest::addColumn<QString>("text");
    QTest::newRow("midnight") << QByteArray("UTC") << 0 << "12 AM +0000 UTC";
    QTest::newRow("before noon") << QByteArray("UTC") << 11 << "11 AM +0000 UTC";
    QTest::newRow("noon") << QByteArray("UTC") << 12 << "12 PM +0000 UTC";
    QTest::newRow("last") << QByteArray("UTC") << 23 << "11 PM +0000 UTC";
    QTest::newRow("east") << QByteArray("IST-5:30") << 7 << "12 PM +0530 IST";
    QTest::newRow("west") << QByteArray("NST3:30") << 7 << "03 AM -0330 NST";
}

void tst_CalendarFormat::hoursAndZone()
{
    QFETCH(QByteArray, zone);
    QFETCH(int, hour);
    inZone(zone);
    const QDateTime then(date.date(), QTime(hour, 5), Qt::UTC);
    QTEST(CalendarFormat::text(then, u"%I %p %z %Z"_s, {}), "text");
}

void tst_CalendarFormat::namesComeFromTheLocale()
{
    QCOMPARE(CalendarFormat::text(date, u"%A %a %B %b %p"_s, german),
             u"Sonntag So Februar Feb. vorm."_s);
    // Lists that are too short are filled up with English names.
    QCOMPARE(CalendarFormat::text(date.addDays(31), u"%A %b"_s, german), u"Wednesday Mar"_s);
}

void tst_CalendarFormat::formatThatNamesItselfEnds()
{
    const QVariantMap locale { { Settings::TimeDateFormat, u"<%c>"_s },
                               { Settings::DateFormat, u"%x"_s } };
    QVERIFY(CalendarFormat::text(date, u"%c"_s, locale).startsWith(u"<<"_s));
    QCOMPARE(CalendarFormat::text(date, u"%x"_s, locale), u"2009-02-01"_s);
}

void tst_CalendarFormat::noFormatGivesThePlainDescription()
{
    inZone("CET-1");
    const TestFolder folder;
    const UserDefaults defaults(folder.path(u"settings.plist"_s));
    QCOMPARE(DateText(defaults).getLocalizedShortDateAndTime(date), u"2009-02-01 08:05:03 +0100"_s);
}

void tst_CalendarFormat::longDateIsTwoHalvesAndABlank()
{
    const TestFolder folder;
    UserDefaults defaults(folder.path(u"settings.plist"_s), german);
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime({}), u" "_s);
    defaults.setValue(Settings::DateFormat, u"%A"_s);
    defaults.setValue(Settings::TimeFormat, u"%I %p"_s);
    // Kept: the time's names need a format that the time does not use.
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 AM"_s);
    defaults.setValue(Settings::TimeDateFormat, u"%c"_s);
    QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 vorm."_s);
}

void tst_CalendarFormat::localeEndsAtTheFirstMissingValue()
{
    const TestFolder folder;
    QVariantMap values = german;
    values.remove(Settings::AmPmDesignation);
    values.insert(Settings::TimeDateFormat, u"%c"_s);
    const UserDefaults defaults(folder.path(u"settings.plist"_s), values);
    QCOMPARE(DateText(defaults).systemDefinedLocale().keys(),
             QStringList { QString(Settings::TimeDateFormat) });
}

QTEST_GUILESS_MAIN(tst_CalendarFormat)
#include "tst_CalendarFormat.moc"
