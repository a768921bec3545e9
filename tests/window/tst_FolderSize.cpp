#include "window/FolderSize.h"

#include "tests/support/TestFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FolderSize : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachFileCountsItsSizeAnd4095Bytes();
    void theTextSwitchesUnits_data();
    void theTextSwitchesUnits();
};

void tst_FolderSize::eachFileCountsItsSizeAnd4095Bytes()
{
    const TestFolder folder;
    const std::atomic<bool> never { false };
    QCOMPARE(FolderSize::totalOf(folder.path(), never), 0.0);
    folder.makeFolder(u"a/b/c"_s);
    QCOMPARE(FolderSize::totalOf(folder.path(), never), 0.0); // folders count nothing
    folder.write(u"a/b/c/one"_s, "x");
    QCOMPARE(FolderSize::text(FolderSize::totalOf(folder.path(), never)), u"4 KB"_s);
    folder.write(QString(u"a/"_s) + QChar(0xDCFF), QByteArray(10, 'x'));
    folder.link(folder.path(), u"a/loop"_s); // counts as itself, is not entered
    QCOMPARE(FolderSize::totalOf(folder.path(), never),
             1.0 + 10 + double(folder.path().size()) + 3 * 4095);
    const std::atomic<bool> stop { true };
    QVERIFY(FolderSize::totalOf(folder.path(), stop) < 3 * 4095);
    QCOMPARE(FolderSize::totalOf(folder.path(u"gone"_s), never), 0.0);
}

void tst_FolderSize::theTextSwitchesUnits_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << u"0 Bytes"_s;
    QTest::newRow("last of the bytes") << 1023.0 << u"1023 Bytes"_s;
    QTest::newRow("first KB") << 1024.0 << u"1 KB"_s;
    QTest::newRow("rounds into the next unit") << 1048575.0 << u"1024 KB"_s;
    QTest::newRow("first MB") << 1048576.0 << u"1.00 MB"_s;
    QTest::newRow("GB") << 1610612736.0 << u"1.50 GB"_s;
}

void tst_FolderSize::theTextSwitchesUnits()
{
    QFETCH(double, total);
    QTEST(FolderSize::text(total), "text");
}

QTEST_GUILESS_MAIN(tst_FolderSize)
#include "tst_FolderSize.moc"
