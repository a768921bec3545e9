#include "settings/SizeText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_SizeText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itemSizeSwitchesUnitAtEachThreshold();
    void sumHasThreeDigits();
};

void tst_SizeText::itemSizeSwitchesUnitAtEachThreshold()
{
    // A half goes to the even.
    const QList<std::pair<qint64, QString>> cases {
        { 0, u"0 Bytes"_s },          { 1, u"1 Bytes"_s },
        { 1023, u"1023 Bytes"_s },    { 1024, u"1 KB"_s },
        { 1500, u"1 KB"_s },          { 1536, u"2 KB"_s },
        { 2560, u"2 KB"_s },          { 1048575, u"1024 KB"_s },
        { 1048576, u"1.00 MB"_s },    { 1073741823, u"1024.00 MB"_s },
        { 1073741824, u"1.00 GB"_s }, { 3LL << 40, u"3072.00 GB"_s },
    };
    for (const auto &[bytes, text] : cases)
        QCOMPARE(SizeText::getCalcFileSize(bytes), text);
}

void tst_SizeText::sumHasThreeDigits()
{
    const QList<std::pair<double, QString>> cases {
        { 0, u"0 Bytes"_s },         { 1023, u"0 Bytes"_s },        { qQNaN(), u"0 Bytes"_s },
        { 1024, u"1 KB"_s },         { 1048575, u"1.02e+03 KB"_s }, { 123456789, u"118 MB"_s },
        { 1610612736, u"1.5 GB"_s }, { 0x1p40, u"1.02e+03 GB"_s },
    };
    for (const auto &[bytes, text] : cases)
        QCOMPARE(SizeText::getCalcFileSizeWithDouble(bytes), text);
}

QTEST_APPLESS_MAIN(tst_SizeText)
#include "tst_SizeText.moc"
