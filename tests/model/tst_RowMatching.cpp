#include "model/RowMatching.h"

#include "tests/support/TestFolder.h"
#include "widgets/FileKinds.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_RowMatching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void patterns()
    {
        using enum MatchMethod;
        constexpr auto EitherCase = false;
        constexpr auto ByCase = true;
        const struct {
            const char *rule;
            QString field;
            MatchMethod method;
            QString text;
            bool caseSensitive;
            bool matches;
        } rows[] = {
            { "contains", u"a.txt"_s, Contains, u".T"_s, EitherCase, true },
            { "contains, by case", u"a.txt"_s, Contains, u".T"_s, ByCase, false },
            { "begins", u"abc"_s, BeginsWith, u"AB"_s, EitherCase, true },
            { "begins, by case", u"abc"_s, BeginsWith, u"AB"_s, ByCase, false },
            { "ends", u"B.Txt"_s, EndsWith, u".TXT"_s, EitherCase, true },
            { "equals", u"ABC"_s, Equals, u"abc"_s, EitherCase, true },
            { "equals the whole", u"abcd"_s, Equals, u"abc"_s, EitherCase, false },
            { "longer than the field", u"ab"_s, BeginsWith, u"abc"_s, EitherCase, false },
            { "longer at the end", u"bc"_s, EndsWith, u"abc"_s, EitherCase, false },
            { "longer than an empty field", {}, Equals, u"a"_s, EitherCase, false },
            { "a method of another kind", u"abc"_s, MatchMethod(7), u"abc"_s, EitherCase, false },
            { "no expression", u"abc"_s, Contains, u"a.c"_s, EitherCase, false },
            { "plain characters", u"a[1]*"_s, Contains, u"[1]*"_s, EitherCase, true },
        };
        for (const auto &[rule, field, method, text, byCase, matches] : rows)
            QVERIFY2(RowMatching::matches(field, { MatchTarget::Name, method, text, byCase })
                         == matches,
                     rule);
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
