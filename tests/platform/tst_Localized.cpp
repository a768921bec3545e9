#include "platform/LocaleDefaults.h"
#include "platform/Localized.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_Localized : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreNotSearched();
    void placeholderOfTheSortIsFilled();
    void formatsOfTheLocale_data();
    void formatsOfTheLocale();
    void namesOfTheLocale();
};

void tst_Localized::argumentsAreNotSearched()
{
    QCOMPARE(filled(u"'%@' in '%@'"_s, u"50%@"_s, u"%@%@"_s), u"'50%@' in '%@%@'"_s);
    QCOMPARE(filled(u"only '%@'"_s, u"%@"_s, u"b"_s), u"only '%@'"_s);
}

void tst_Localized::placeholderOfTheSortIsFilled()
{
    QCOMPARE(filled(filled(u"%@: %i of %i"_s, 3), u"name"_s), u"name: 3 of %i"_s);
    QCOMPARE(filled(u"nothing"_s, u"name"_s), u"nothing"_s);
}

void tst_Localized::formatsOfTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("format");
    const QLocale german(u"de_DE"_s);
    const QLocale american(u"en_US"_s);
    const QLocale spanish(u"es_ES"_s);
    const QString shortKey = u"NSShortTimeDateFormatString"_s;
    QTest::newRow("German, short") << german << shortKey << u"%d.%m.%y %H:%M"_s;
    QTest::newRow("German, date") << german << u"NSDateFormatString"_s << u"%A, %e. %B %Y"_s;
    QTest::newRow("German, time") << german << u"NSTimeFormatString"_s << u"%H:%M:%S"_s;
    QTest::newRow("American, short") << american << shortKey << u"%1m/%e/%y %1I:%M %p"_s;
    QTest::newRow("American, time") << american << u"NSTimeFormatString"_s << u"%1I:%M:%S %p"_s;
    QTest::newRow("quoted words, zone in brackets")
        << spanish << u"NSTimeDateFormatString"_s << u"%A, %e de %B de %Y %1H:%M:%S"_s;
}

void tst_Localized::formatsOfTheLocale()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, key);
    QTEST(localeDefaults(locale).value(key).toString(), "format");
}

void tst_Localized::namesOfTheLocale()
{
    const QVariantMap german = localeDefaults(QLocale(u"de_DE"_s));
    const QVariantList days = german.value(u"NSWeekDayNameArray"_s).toList();
    QCOMPARE(days.size(), 7);
    QCOMPARE(days.first(), QVariant(u"Sonntag"_s));
    QCOMPARE(days.last(), QVariant(u"Samstag"_s));
    const QVariantList months = german.value(u"NSMonthNameArray"_s).toList();
    QCOMPARE(months.size(), 12);
    QCOMPARE(months.value(2), QVariant(u"März"_s));
}

QTEST_GUILESS_MAIN(tst_Localized)
#include "tst_Localized.moc"
