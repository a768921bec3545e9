#include "base/Localized.h"
#include "settings/CalendarFormat.h"
#include "settings/DateText.h"
#include "settings/LocaleDefaults.h"
#include "settings/SettingsKeys.h"
#include "settings/SizeText.h"
#include "settings/UserDefaults.h"
#include "settings/VersionText.h"
#include "tests/support/TestFolder.h"

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

// How sizes, dates and texts with names in them read.
class tst_Texts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { inZone("UTC"); }

    void placeholdersAreFilledOnceAndArgumentsNot()
    {
        QCOMPARE(filled(u"'%@' in '%@'"_s, u"50%@"_s, u"%@%@"_s), u"'50%@' in '%@%@'"_s);
        QCOMPARE(filled(u"only '%@'"_s, u"%@"_s, u"b"_s), u"only '%@'"_s);
        QCOMPARE(filled(filled(u"%@: %i of %i"_s, 3), u"name"_s), u"name: 3 of %i"_s);
        QCOMPARE(filled(u"nothing"_s, u"name"_s), u"nothing"_s);
    }

    void sizesSwitchUnitAtEachThreshold()
    {
        // A half goes to the even.
        const std::pair<qint64, QString> sizes[] = {
            { 0, u"0 Bytes"_s },          { 1, u"1 Bytes"_s },
            { 1023, u"1023 Bytes"_s },    { 1024, u"1 KB"_s },
            { 1500, u"1 KB"_s },          { 1536, u"2 KB"_s },
            { 2560, u"2 KB"_s },          { 1048575, u"1024 KB"_s },
            { 1048576, u"1.00 MB"_s },    { 1073741823, u"1024.00 MB"_s },
            { 1073741824, u"1.00 GB"_s }, { 3LL << 40, u"3072.00 GB"_s },
        };
        for (const auto &[bytes, text] : sizes)
            QCOMPARE(SizeText::getCalcFileSize(bytes), text);
        // A sum of shown sizes reads none of them back.
        const std::pair<QString, float> units[] = {
            { u"GB"_s, 0x1p30F }, { u"MB"_s, 0x1p20F }, { u"KB"_s, 0x1p10F }, { u"Bytes"_s, 1 }
        };
        for (qint64 bytes = 1; bytes < 1LL << 60; bytes += bytes / 777 + 1) {
            const QStringList words = SizeText::getCalcFileSize(bytes).split(u' ');
            const auto unit = std::ranges::find(units, words[1], &std::pair<QString, float>::first);
            QCOMPARE(SizeText::readAsText(bytes), double(words[0].toFloat() * unit->second));
        }
        const std::pair<double, QString> rounded[] = {
            { 0, u"0 Bytes"_s },
            { 1023, u"1023 Bytes"_s },
            { 1024, u"1 KB"_s },
            { 1260, u"1.23 KB"_s },
            { 999.4 * 0x1p10, u"999 KB"_s },
            { 999.5 * 0x1p10, u"1000 KB"_s },
            { 53.06 * 0x1p30, u"53.1 GB"_s },
            { 0x1p40, u"1 TB"_s },
            { 0x1p64, u"16384 PB"_s },
        };
        for (const auto &[bytes, text] : rounded)
            QCOMPARE(SizeText::getRoundedSize(bytes), text);
        const std::pair<double, QString> sums[] = {
            // have three digits
            { 0, u"0 Bytes"_s },         { 1023, u"0 Bytes"_s },        { qQNaN(), u"0 Bytes"_s },
            { 1024, u"1 KB"_s },         { 1048575, u"1.02e+03 KB"_s }, { 123456789, u"118 MB"_s },
            { 1610612736, u"1.5 GB"_s }, { 0x1p40, u"1.02e+03 GB"_s },
        };
        for (const auto &[bytes, text] : sums)
            QCOMPARE(SizeText::getCalcFileSizeWithDouble(bytes), text);
    }

    void versionShiftsForEveryCharacter()
    {
        const QList<std::pair<QByteArray, quint32>> cases {
            { "", 0 },
            { "1.2.3", 0x10203 },
            { "1.10", 0x1010 },
            { "1.2.3\n", 0x102030 },
            { "ff", 0 },
            { "FF", 0xFF },
            { "123456789", 0x23456789 },
            { "F0000000", 0xF0000000 }, // wraps, also below zero
        };
        for (const auto &[text, value] : cases)
            QCOMPARE(VersionText::hexValue(text), qint32(value));
    }

    void datesFollowTheirFormat()
    {
        const std::pair<QString, QString> cases[] = {
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
        const std::tuple<const char *, int, QString> hours[] = {
            { "UTC", 0, u"12 AM +0000 UTC"_s },      { "UTC", 11, u"11 AM +0000 UTC"_s },
            { "UTC", 12, u"12 PM +0000 UTC"_s },     { "UTC", 23, u"11 PM +0000 UTC"_s },
            { "IST-5:30", 7, u"12 PM +0530 IST"_s }, { "NST3:30", 7, u"03 AM -0330 NST"_s },
        };
        for (const auto &[zone, hour, text] : hours) {
            inZone(zone);
            const QDateTime then(date.date(), QTime(hour, 5), Qt::UTC);
            QCOMPARE(CalendarFormat::text(then, u"%I %p %z %Z"_s, {}), text);
        }
    }

    void namesOfDatesComeFromTheLocale()
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
        // So do formats that name each other many times over.
        const QVariantMap many { { Settings::TimeDateFormat, u"%x"_s.repeated(5000) },
                                 { Settings::DateFormat, u"%X"_s.repeated(5000) } };
        QVERIFY(CalendarFormat::text(date, u"%c"_s.repeated(5000), many).size() < 2000);
    }

    void datesAreWrittenAsStored()
    {
        const TestFolder folder;
        UserDefaults defaults(folder.path(u"settings.plist"_s), german);
        const DateText texts(defaults);
        // Without a format the plain description; long, two halves and a blank.
        inZone("CET-1");
        QCOMPARE(texts.getLocalizedShortDateAndTime(date), u"2009-02-01 08:05:03 +0100"_s);
        QCOMPARE(texts.getLocalizedDateAndTime({}), u" "_s);
        inZone("UTC");
        defaults.setValue(Settings::DateFormat, u"%A"_s);
        defaults.setValue(Settings::TimeFormat, u"%I %p"_s);
        // Kept: the time's names need a format that the time does not use.
        QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 AM"_s);
        defaults.setValue(Settings::TimeDateFormat, u"%c"_s);
        QCOMPARE(DateText(defaults).getLocalizedDateAndTime(date), u"Sonntag 07 vorm."_s);
    }

    void formatsAndNamesOfTheLocale()
    {
        const auto of = [](const QString &locale) { return localeDefaults(QLocale(locale)); };
        const std::tuple<QString, QString, QString> formats[] = {
            { u"de_DE"_s, u"NSShortTimeDateFormatString"_s, u"%d.%m.%y %H:%M"_s },
            { u"de_DE"_s, u"NSDateFormatString"_s, u"%A, %e. %B %Y"_s },
            { u"de_DE"_s, u"NSTimeFormatString"_s, u"%H:%M:%S"_s },
            { u"en_US"_s, u"NSShortTimeDateFormatString"_s, u"%1m/%e/%y %1I:%M %p"_s },
            { u"en_US"_s, u"NSTimeFormatString"_s, u"%1I:%M:%S %p"_s },
            // Quoted words, and the zone in brackets left out.
            { u"es_ES"_s, u"NSTimeDateFormatString"_s, u"%A, %e de %B de %Y %1H:%M:%S"_s },
        };
        for (const auto &[locale, key, format] : formats)
            QCOMPARE(of(locale).value(key).toString(), format);
        const QStringList days = of(u"de_DE"_s).value(u"NSWeekDayNameArray"_s).toStringList();
        QCOMPARE(days.join(u' '), u"Sonntag Montag Dienstag Mittwoch Donnerstag Freitag Samstag"_s);
        const QStringList months = of(u"de_DE"_s).value(u"NSMonthNameArray"_s).toStringList();
        QCOMPARE(months.size(), 12);
        QCOMPARE(months[2], u"März"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Texts)
#include "tst_Texts.moc"
