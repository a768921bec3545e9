#include "search/TextMatch.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_TextMatch final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void queryHasOneMeaning_data();
    void queryHasOneMeaning();
    void otherQueriesAreRefused_data();
    void otherQueriesAreRefused();
    void matches_data();
    void matches();
    void longTextsTakeNoLonger();

private:
    static QueryText query(const QString &text, const QString &modifiers)
    {
        const QString value = u" == \""_s + text + u'"' + modifiers;
        return QueryText::read({ u'*' + value, text }).value();
    }
};

void tst_TextMatch::queryHasOneMeaning_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << u"report"_s;
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("quotes and operators") << u"\" || * == \""_s;
    QTest::newRow("what follows a text") << u"\"cdw || kMDItemTextContent == \""_s;
    QTest::newRow("its own end") << u"a\"c"_s;
    QTest::newRow("long") << QString(10'000, u'"');
}

void tst_TextMatch::queryHasOneMeaning()
{
    QFETCH(const QString, text);
    for (const char *modifiers : { "", "c", "d", "w", "cd", "cw", "dw", "cdw" }) {
        const QString letters = QLatin1StringView(modifiers);
        const QString value = u" == \""_s + text + u'"' + letters;
        for (const bool content : { false, true }) {
            const QString all =
                u'*' + value + (content ? u" || kMDItemTextContent"_s + value : QString());
            const auto read = QueryText::read({ all, text });
            QVERIFY(read);
            QCOMPARE(read->text, text.toUtf8());
            QCOMPARE(read->content, content);
            QCOMPARE(read->words, letters.contains(u'w'));
            QCOMPARE(read->steps.testFlag(Folding::Case), letters.contains(u'c'));
            QCOMPARE(read->steps.testFlag(Folding::Accents), letters.contains(u'd'));
        }
    }
}

void tst_TextMatch::otherQueriesAreRefused_data()
{
    QTest::addColumn<QString>("query");
    QTest::newRow("another text") << u"* == \"y\"cdw"_s;
    QTest::newRow("another attribute") << u"kMDItemTitle == \"x\"cdw"_s;
    QTest::newRow("another order") << u"* == \"x\"dc"_s;
    QTest::newRow("something behind it") << u"* == \"x\"cdw "_s;
    QTest::newRow("other letters behind") << u"* == \"x\"cd || kMDItemTextContent == \"x\"c"_s;
    QTest::newRow("half of it") << u"* == \"x\"c || kMDItemTextContent == \"x"_s;
    QTest::newRow("nothing") << u""_s;
}

void tst_TextMatch::otherQueriesAreRefused()
{
    QFETCH(const QString, query);
    QVERIFY(!QueryText::read({ query, u"x"_s }));
}

void tst_TextMatch::matches_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("modifiers");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("found");
    const auto row = [](const char *name, const QString &text, const char *modifiers,
                        const char *value, bool found) {
        QTest::newRow(name) << text << QString::fromLatin1(modifiers) << QByteArray(value) << found;
    };
    // Which letters it takes, for one value that differs by case and one that does by an accent.
    for (const char *modifiers : { "", "c", "d", "w", "cd", "cw", "dw", "cdw" }) {
        const QByteArrayView letters(modifiers);
        const QByteArray name = QByteArray("with \"") + modifiers + "\": ";
        row(name + "case", u"report"_s, modifiers, "A REPORT", letters.contains('c'));
        row(name + "accent", u"resume"_s, modifiers, "a r\u00E9sum\u00E9", letters.contains('d'));
        row(name + "both parts", u"r\u00E9sum\u00E9"_s, modifiers, "re\u0301sume\u0301", true);
        row(name + "inside", u"port"_s, modifiers, "report", !letters.contains('w'));
        row(name + "beginning", u"rep"_s, modifiers, "a report", true);
        row(name + "punctuation", u"a-b"_s, modifiers, "a_b", letters.contains('w'));
    }
    row("sharp s by accents", u"STRASSE"_s, "cdw", "stra\u00DFe", true);
    row("sharp s not by case", u"STRASSE"_s, "cw", "stra\u00DFe", false);
    row("Turkish i", u"ISPARTA"_s, "cdw", "\u0131sparta", true);
    row("Turkish i, dotted", u"istanbul"_s, "cdw", "\u0130STANBUL", true);
    row("words in order", u"two three"_s, "cdw", "one two three four", true);
    row("words in another order", u"three two"_s, "cdw", "one two three four", false);
    row("words apart", u"one three"_s, "cdw", "one two three four", false);
    row("the last by its beginning", u"two thr"_s, "cdw", "one two three", true);
    row("the first not", u"tw three"_s, "cdw", "one two three", false);
    row("the first not by its end", u"wo three"_s, "cdw", "one two three", false);
    row("words that begin again", u"a b a c"_s, "cdw", "a b a b a c", true);
    row("words that begin again, prefix", u"a a b"_s, "cdw", "a a a bx", true);
    row("a part at the end of nothing", u"a a b"_s, "cdw", "a a", false);
    row("file name", u"report"_s, "cdw", "my_report-2.pdf", true);
    row("digits belong to the word", u"img"_s, "cdw", "myimg2", false);
    row("Chinese", u"\u56FD\u4EBA"_s, "cdw", "\u4E2D\u56FD\u4EBA", true);
    row("letter without its accent", u"u"_s, "c", "\u00FC", false);
    row("word without its accent", u"u"_s, "cw", "\u00FCber", false);
    row("the same after another", u"u"_s, "c", "\u00FCu", true);
    row("spaces are a part", u"  "_s, "cdw", "a  b", true);
    row("fewer spaces", u"  "_s, "cdw", "a b", false);
    row("punctuation is a part", u"++"_s, "cdw", "c++", true);
    row("quotes and operators", u"\" || * == \""_s, "", "x\" || * == \"y", true);
    row("their words", u"NEAR(a* OR -b)"_s, "cdw", "near, a or b", true);
    row("pattern letters are none", u"a*b"_s, "cd", "aab", false);
    row("not UTF-8", u"caf"_s, "cdw", "caf\xE9.txt", true);
    row("only what is never seen", u"\u200D\u00AD"_s, "cd", "a", false);
}

void tst_TextMatch::matches()
{
    QFETCH(const QString, text);
    QFETCH(const QString, modifiers);
    QFETCH(const QByteArray, value);
    TextMatch match(query(text, modifiers));
    QTEST(match.matches(value), "found");
    TextMatch copy(match); // has words of its own
    match = TextMatch(query(u"another"_s, u"w"_s));
    QTEST(copy.matches(value), "found");
}

// A walk back at each word would take hours.
void tst_TextMatch::longTextsTakeNoLonger()
{
    const QByteArray value = QByteArray("a ").repeated(1'000'000);
    TextMatch words(query(u"a "_s.repeated(5'000) + u'b', u"cdw"_s));
    QVERIFY(!words.matches(value + "c b"));
    QVERIFY(words.matches(value + 'b'));
    TextMatch part(query(u"a "_s.repeated(5'000) + u'b', u"cd"_s));
    QVERIFY(!part.matches(value + "c b"));
    QVERIFY(part.matches(value + 'b'));
}

QTEST_APPLESS_MAIN(tst_TextMatch)
#include "tst_TextMatch.moc"
