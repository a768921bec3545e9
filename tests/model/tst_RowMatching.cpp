#include "model/RowMatching.h"

#include "tests/support/TestFolder.h"
#include "widgets/FileKinds.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RowMatching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void patterns_data()
    {
        using enum MatchMethod;
        QTest::addColumn<QString>("field");
        QTest::addColumn<MatchMethod>("method");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<bool>("matches");
        QTest::newRow("contains") << u"a.txt"_s << Contains << u".T"_s << false << true;
        QTest::newRow("contains, by case") << u"a.txt"_s << Contains << u".T"_s << true << false;
        QTest::newRow("begins") << u"abc"_s << BeginsWith << u"AB"_s << false << true;
        QTest::newRow("begins, by case") << u"abc"_s << BeginsWith << u"AB"_s << true << false;
        QTest::newRow("ends") << u"B.Txt"_s << EndsWith << u".TXT"_s << false << true;
        QTest::newRow("equals") << u"ABC"_s << Equals << u"abc"_s << false << true;
        QTest::newRow("equals the whole") << u"abcd"_s << Equals << u"abc"_s << false << false;
        QTest::newRow("longer than the field")
            << u"ab"_s << BeginsWith << u"abc"_s << false << false;
        QTest::newRow("longer at the end") << u"bc"_s << EndsWith << u"abc"_s << false << false;
        QTest::newRow("longer than an empty field")
            << QString() << Equals << u"a"_s << false << false;
        QTest::newRow("a method of another kind")
            << u"abc"_s << MatchMethod(7) << u"abc"_s << false << false;
        QTest::newRow("no expression") << u"abc"_s << Contains << u"a.c"_s << false << false;
        QTest::newRow("plain characters") << u"a[1]*"_s << Contains << u"[1]*"_s << false << true;
    }

    void patterns()
    {
        QFETCH(QString, field);
        QFETCH(MatchMethod, method);
        QFETCH(QString, text);
        QFETCH(bool, caseSensitive);
        QTEST(RowMatching::matches(field, { MatchTarget::Name, method, text, caseSensitive }),
              "matches");
    }

    void aSearchBeginsBelowTheSelectedRow()
    {
        QCOMPARE(RowMatching::startRow(-1, 5), 0);
        QCOMPARE(RowMatching::startRow(0, 5), 0); // the parent row, which is looked at again
        QCOMPARE(RowMatching::startRow(1, 5), 2);
        QCOMPARE(RowMatching::startRow(4, 5), 5);
        QCOMPARE(RowMatching::startRow(5, 5), 0); // past the rows of a folder that shrank
    }

    void onlyNamesAreLookedUp()
    {
        const TestFolder folder;
        const FileKinds kinds;
        folder.write(u"same"_s);
        const Listing rows = Listing::read(folder.path(), ListingOptions {}, kinds);
        const auto names = RowMatching::namesOf(rows);
        QVERIFY(RowMatching::arrayContainsEntry(names, rows[1], "name"_L1));
        for (const char *key : { "size", "date", "type", "Name", "" }) // Kept: never found
            QVERIFY(!RowMatching::arrayContainsEntry(names, rows[1], QLatin1StringView(key)));
    }
};

QTEST_MAIN(tst_RowMatching)
#include "tst_RowMatching.moc"
