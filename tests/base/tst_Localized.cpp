#include "base/Localized.h"
#include "settings/LocaleDefaults.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_Localized : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void placeholdersAreFilledOnceAndArgumentsNot();
    void formatsAndNamesOfTheLocale();
};

void tst_Localized::placeholdersAreFilledOnceAndArgumentsNot()
{
    QCOMPARE(filled(u"'%@' in '%@'"_s, u"50%@"_s, u"%@%@"_s), u"'50%@' in '%@%@'"_s);
    QCOMPARE(filled(u"only '%@'"_s, u"%@"_s, u"b"_s), u"only '%@'"_s);
    QCOMPARE(filled(filled(u"%@: %i of %i"_s, 3), u"name"_s), u"name: 3 of %i"_s);
    QCOMPARE(filled(u"nothing"_s, u"name"_s), u"nothing"_s);
}

void tst_Localized::formatsAndNamesOfTheLocale()
{
    const QVariantMap german = localeDefaults(QLocale(u"de_DE"_s));
    const QVariantMap american = localeDefaults(QLocale(u"en_US"_s));
    const QVariantMap spanish = localeDefaults(QLocale(u"es_ES"_s));
    const std::tuple<QVariantMap, QString, QString> formats[] = {
        { german, u"NSShortTimeDateFormatString"_s, u"%d.%m.%y %H:%M"_s },
        { german, u"NSDateFormatString"_s, u"%A, %e. %B %Y"_s },
        { german, u"NSTimeFormatString"_s, u"%H:%M:%S"_s },
        { american, u"NSShortTimeDateFormatString"_s, u"%1m/%e/%y %1I:%M %p"_s },
        { american, u"NSTimeFormatString"_s, u"%1I:%M:%S %p"_s },
        // Quoted words, and the zone in brackets left out.
        { spanish, u"NSTimeDateFormatString"_s, u"%A, %e de %B de %Y %1H:%M:%S"_s },
    };
    for (const auto &[defaults, key, format] : formats)
        QCOMPARE(defaults.value(key).toString(), format);
    const QStringList days = german.value(u"NSWeekDayNameArray"_s).toStringList();
    QCOMPARE(days.size(), 7);
    QCOMPARE(days.first() + days.last(), u"SonntagSamstag"_s);
    const QStringList months = german.value(u"NSMonthNameArray"_s).toStringList();
    QCOMPARE(months.size(), 12);
    QCOMPARE(months[2], u"März"_s);
}

QTEST_GUILESS_MAIN(tst_Localized)
#include "tst_Localized.moc"
