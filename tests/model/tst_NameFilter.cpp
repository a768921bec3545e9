#include "model/NameFilter.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_NameFilter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPatternIsForTheWholeName()
    {
        // The pattern, the name, and whether they match in either case and by case.
        const std::tuple<const char *, QByteArray, bool, bool> rows[] = {
            { "*.jpg", "a.jpg", true, true },
            { "*.jpg", "a.JPG", true, false },
            { "*.jpg", "a.jpg.txt", false, false },
            { "IMG_????.*", "img_0001.png", true, false },
            { "IMG_????.*", "IMG_001.png", false, false },
            { "[a-c]*", "beta", true, true },
            { "[A-C]*", "beta", true, false },
            { "[!a-c]*", "beta", false, false },
            { "[!a-c]*", "delta", true, true },
            { "[]-]?", "]x", true, true },
            { "?[", "a[", true, true }, // a bracket that nothing closes
            { "*a*b", "aab", true, true },
            { "*a*b*", "b a", false, false },
            { "*", "", true, true },
            { "?", "", false, false },
            { "**?**", "x", true, true },
            { "?*?", "x", false, false },
            { "f??l", "f\xff\xfel", true, true }, // bytes that are no text
            { "f?l", "f\xc3\xbcl", true, true },
            { "f?l", "fu\xcc\x88l", true, true }, // ü in two parts
            { "f\u00fcl*", "fu\xcc\x88l", true, true },
            { "fu*", "f\xc3\xbcl", false, false }, // a star leaves a letter its marks
            { "\u00dc*", "\xc3\xbc", true, false },
        };
        for (const auto &[pattern, name, eitherCase, byCase] : rows) {
            const QString text = QString::fromUtf8(pattern);
            QVERIFY2(NamePattern(text, Folding::Case).matches(name) == eitherCase, pattern);
            QVERIFY2(NamePattern(text, Folding::Exact).matches(name) == byCase, pattern);
        }
    }

    void aTextIsAPartOfTheName()
    {
        const std::tuple<const char *, QByteArray, bool> rows[] = {
            { "", "any", true },
            { "REPORT", "My report.txt", true },
            { "muller", "M\xc3\xbcller", true },
            { "\u00fcl", "Muller", true },
            { "strasse",
              "Stra\xc3\x9f"
              "e",
              true },
            { "stra?e",
              "Stra\xc3\x9f"
              "e",
              true },
            { "rep", "per", false },
            { "[1]", "a[1].txt", true }, // no pattern
            { "*.t?t", "a.TXT", true },
            { "*.t?t", "a.txt2", false },
            { "report\n", "report.txt", true }, // as it is pasted
            { "a\nb", "xa\nbx", true },
            { "caf", "caf\xe9", true },
            { "caf\ufffd", "caf\xe9", true }, // as it is shown
            { "a\\nb", "a\nb", true },
        };
        for (const auto &[text, name, passes] : rows)
            QVERIFY2(NameFilter(QString::fromUtf8(text)).matches(name) == passes, text);
        QVERIFY(!NameFilter(QString(10'000, u'x')).matches(QByteArray(255, 'x')));

        // The text, a longer one, and whether the rows of the first are enough for it.
        const std::tuple<QString, QString, bool> narrowing[] = {
            { {}, u"a"_s, true },       { u"a"_s, u"ab"_s, true },  { u"b"_s, u"AB"_s, true },
            { u"ab"_s, u"a"_s, false }, { u"a"_s, u"a*"_s, false }, { u"?"_s, u"?a"_s, false },
        };
        for (const auto &[before, text, narrows] : narrowing)
            QVERIFY2(NameFilter(text).narrows(NameFilter(before)) == narrows, qPrintable(text));
    }

    // One that tries every way to share a name out would not come to its end.
    void noPatternTakesLong()
    {
        const QString patterns[] = { QString(10'000, u'*') + u'b', u"*a"_s.repeated(120) + u'b',
                                     u"?*"_s.repeated(5'000), u"[a-z]"_s.repeated(2'000) + u'*' };
        const QByteArray name(255, 'a');
        for (const QString &text : patterns) {
            NamePattern pattern(text, Folding::All);
            for (int i = 0; i < 2'000; ++i)
                QVERIFY(!pattern.matches(name));
        }
    }
};

QTEST_GUILESS_MAIN(tst_NameFilter)
#include "tst_NameFilter.moc"
