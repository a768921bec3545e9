#include "window/RowMatching.h"

#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_RowMatching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void patterns_data();
    void patterns();
    void anUnknownTargetFindsNothing();
    void theParentRowIsNoMatchOfAPattern();
    void aSearchBeginsBelowTheSelectedRow_data();
    void aSearchBeginsBelowTheSelectedRow();
    void onlyNamesAreLookedUp_data();
    void onlyNamesAreLookedUp();
    void namesAreEqualByTheirBytes();
    void entriesAreEqualByWhatIsListed_data();
    void entriesAreEqualByWhatIsListed();

private:
    Listing read(const QString &name) const
    {
        return Listing::read(folder.path(name), ListingOptions {}, kinds);
    }

    TestFolder folder;
    FileKinds kinds;
};

void tst_RowMatching::patterns_data()
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
    QTest::newRow("longer than the field") << u"ab"_s << BeginsWith << u"abc"_s << false << false;
    QTest::newRow("longer at the end") << u"bc"_s << EndsWith << u"abc"_s << false << false;
    QTest::newRow("longer than an empty field") << QString() << Equals << u"a"_s << false << false;
    QTest::newRow("a method of another kind")
        << u"abc"_s << MatchMethod(7) << u"abc"_s << false << false;
    QTest::newRow("no expression") << u"abc"_s << Contains << u"a.c"_s << false << false;
    QTest::newRow("plain characters") << u"a[1]*"_s << Contains << u"[1]*"_s << false << true;
}

void tst_RowMatching::patterns()
{
    QFETCH(QString, field);
    QFETCH(MatchMethod, method);
    QFETCH(QString, text);
    QFETCH(bool, caseSensitive);
    QTEST(RowMatching::matches(field, { MatchTarget::Name, method, text, caseSensitive }),
          "matches");
}

void tst_RowMatching::anUnknownTargetFindsNothing()
{
    folder.write(u"a"_s);
    for (const MatchMethod method : { MatchMethod::Contains, MatchMethod::Equals })
        QVERIFY(RowMatching::matchingRows(read(u"."_s), { MatchTarget(9), method, u"a"_s }, {})
                    .isEmpty());
}

void tst_RowMatching::theParentRowIsNoMatchOfAPattern()
{
    folder.makeFolder(u"dots"_s);
    folder.write(u"dots/a..b"_s);
    QCOMPARE(RowMatching::matchingRows(read(u"dots"_s), { .text = u".."_s }, {}), RowSet { 1 });
    QCOMPARE(RowMatching::indexOfFirstFoundStringItem(u".."_s, read(u"dots"_s)), 0);
}

void tst_RowMatching::aSearchBeginsBelowTheSelectedRow_data()
{
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("start");
    QTest::newRow("none selected") << -1 << 0;
    QTest::newRow("the parent row, which is looked at again") << 0 << 0;
    QTest::newRow("a row") << 1 << 2;
    QTest::newRow("the last row") << 4 << 5;
    QTest::newRow("past the rows of a folder that shrank") << 5 << 0;
}

void tst_RowMatching::aSearchBeginsBelowTheSelectedRow()
{
    QFETCH(int, selected);
    QTEST(RowMatching::startRow(selected, 5), "start");
}

void tst_RowMatching::onlyNamesAreLookedUp_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<bool>("found");
    QTest::newRow("name") << QByteArray("name") << true;
    for (const char *key : { "size", "date", "type", "Name", "" }) // Kept: never found
        QTest::addRow("'%s'", key) << QByteArray(key) << false;
}

void tst_RowMatching::onlyNamesAreLookedUp()
{
    QFETCH(QByteArray, key);
    folder.makeFolder(u"one"_s);
    folder.write(u"one/same"_s);
    const Listing rows = read(u"one"_s);
    const auto names = RowMatching::namesOf(rows);
    QTEST(RowMatching::arrayContainsEntry(names, rows[1], QLatin1StringView(key)), "found");
}

void tst_RowMatching::namesAreEqualByTheirBytes()
{
    // The letter in one piece and in two, and bytes that are no text: alike to the eye alone.
    const QStringList left { QString(QChar(0xE9)), FileName::fromBytes("bad\xFF"), u"same"_s };
    const QStringList right { u"e\u0301"_s, FileName::fromBytes("bad\xFE"), u"same"_s };
    folder.makeFolder(u"left"_s);
    folder.makeFolder(u"right"_s);
    for (const QString &name : left)
        folder.write(u"left/"_s + name);
    for (const QString &name : right)
        folder.write(u"right/"_s + name);
    const Listing rows = read(u"left"_s);
    QCOMPARE(RowMatching::rowsOfSameName(rows, read(u"right"_s)),
             RowSet { int(rows.rowOfName(u"same"_s)) });
}

void tst_RowMatching::entriesAreEqualByWhatIsListed_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<qint64>("nanoseconds");
    QTest::addColumn<bool>("equal");
    QTest::newRow("all the same") << 2048 << 5'000'000LL << true;
    QTest::newRow("another size that reads the same") << 2049 << 5'000'000LL << true;
    QTest::newRow("another size") << 4096 << 5'000'000LL << false;
    QTest::newRow("a date cut by the disk of the copy") << 2048 << 5'000'700LL << true;
    QTest::newRow("another date") << 2048 << 6'000'000LL << false;
}

void tst_RowMatching::entriesAreEqualByWhatIsListed()
{
    QFETCH(int, size);
    QFETCH(qint64, nanoseconds);
    const auto make = [&](const QString &name, int bytes, long fraction) {
        folder.makeFolder(name);
        folder.write(name + u"/file"_s, QByteArray(bytes, 'x'));
        const timespec times[2] = { { 1, fraction }, { 1, fraction } };
        QCOMPARE(utimensat(AT_FDCWD, folder.path(name + u"/file"_s).toUtf8(), times, 0), 0);
    };
    make(u"here"_s, 2048, 5'000'000);
    make(u"there"_s, size, nanoseconds);
    const auto equal = RowMatching::equalRows(read(u"here"_s), read(u"there"_s));
    QTEST(equal.here == RowSet { 1 } && equal.there == RowSet { 1 }, "equal");
}

QTEST_MAIN(tst_RowMatching)
#include "tst_RowMatching.moc"
