#include "util/SizeText.h"

#include <QTest>

class tst_SizeText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itemSizeSwitchesUnitAtEachThreshold_data();
    void itemSizeSwitchesUnitAtEachThreshold();
    void sumHasThreeDigits_data();
    void sumHasThreeDigits();
};

void tst_SizeText::itemSizeSwitchesUnitAtEachThreshold_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0LL << "0 Bytes";
    QTest::newRow("no singular") << 1LL << "1 Bytes";
    QTest::newRow("last of the bytes") << 1023LL << "1023 Bytes";
    QTest::newRow("first KB") << 1024LL << "1 KB";
    QTest::newRow("rounds down") << 1500LL << "1 KB";
    QTest::newRow("half goes up to the even") << 1536LL << "2 KB";
    QTest::newRow("half goes down to the even") << 2560LL << "2 KB";
    QTest::newRow("rounds up into the next unit") << 1048575LL << "1024 KB";
    QTest::newRow("first MB") << 1048576LL << "1.00 MB";
    QTest::newRow("last MB") << 1073741823LL << "1024.00 MB";
    QTest::newRow("first GB") << 1073741824LL << "1.00 GB";
    QTest::newRow("no unit above GB") << (3LL << 40) << "3072.00 GB";
}

void tst_SizeText::itemSizeSwitchesUnitAtEachThreshold()
{
    QFETCH(qint64, bytes);
    QTEST(SizeText::getCalcFileSize(bytes), "text");
}

void tst_SizeText::sumHasThreeDigits_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << "0 Bytes";
    QTest::newRow("bytes are not counted") << 1023.0 << "0 Bytes";
    QTest::newRow("no number") << qQNaN() << "0 Bytes";
    QTest::newRow("first KB") << 1024.0 << "1 KB";
    QTest::newRow("last KB") << 1048575.0 << "1.02e+03 KB";
    QTest::newRow("whole MB") << 123456789.0 << "118 MB";
    QTest::newRow("zeros at the end dropped") << 1610612736.0 << "1.5 GB";
    QTest::newRow("no unit above GB") << 1099511627776.0 << "1.02e+03 GB";
}

void tst_SizeText::sumHasThreeDigits()
{
    QFETCH(double, bytes);
    QTEST(SizeText::getCalcFileSizeWithDouble(bytes), "text");
}

QTEST_APPLESS_MAIN(tst_SizeText)
#include "tst_SizeText.moc"
