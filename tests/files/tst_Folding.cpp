#include "files/Folding.h"

#include <QTest>

using namespace Folding;

class tst_Folding final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachStepFoldsItsOwn_data();
    void eachStepFoldsItsOwn();
    void words_data();
    void words();
    void longTextsFoldAsShortOnesDo();
    void longWordsAreCutBetweenCharacters();
};

void tst_Folding::eachStepFoldsItsOwn_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("exact");
    QTest::addColumn<QByteArray>("byCase");
    QTest::addColumn<QByteArray>("byAccents");
    QTest::addColumn<QByteArray>("all");
    const auto row = [](const char *name, const char *text, const char *exact, const char *byCase,
                        const char *byAccents, const char *all) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(exact) << QByteArray(byCase)
                            << QByteArray(byAccents) << QByteArray(all);
    };
    row("ASCII", "Az@[`{09", "Az@[`{09", "az@[`{09", "Az@[`{09", "az@[`{09");
    row("umlaut", "\u00DC", "U\u0308", "u\u0308", "U", "u");
    row("umlaut in two parts", "U\u0308", "U\u0308", "u\u0308", "U", "u");
    row("sharp s", "\u00DF\u1E9E", "\u00DF\u1E9E", "\u00DF\u00DF", "ssSS", "ssss");
    row("joined letters", "\u00C6\u0153", "\u00C6\u0153", "\u00E6\u0153", "AEoe", "aeoe");
    row("strokes", "\u0141\u00F8", "\u0141\u00F8", "\u0142\u00F8", "Lo", "lo");
    row("Turkish i", "\u0130I\u0131i", "I\u0307I\u0131i", "i\u0307i\u0131i", "IIii", "iiii");
    row("Greek", "\u03AC\u03A3\u03C2", "\u03B1\u0301\u03A3\u03C2", "\u03B1\u0301\u03C3\u03C3",
        "\u03B1\u03A3\u03C2", "\u03B1\u03C3\u03C3");
    row("ligature, wide and raised", "\uFB01\uFF21\u00B2", "\uFB01\uFF21\u00B2",
        "\uFB01\uFF41\u00B2", "fiA2", "fia2");
    row("fraction", "\u00BD", "\u00BD", "\u00BD", "\u00BD", "\u00BD");
    row("soft hyphen", "a\u00ADb", "ab", "ab", "ab", "ab");
    row("vowel signs", "\u0915\u093F\u0E35", "\u0915\u093F\u0E35", "\u0915\u093F\u0E35",
        "\u0915\u093F\u0E35", "\u0915\u093F\u0E35");
    row("not UTF-8", "A\xFF\xC3", "A\xFF\xC3", "a\xFF\xC3", "A\xFF\xC3", "a\xFF\xC3");
}

void tst_Folding::eachStepFoldsItsOwn()
{
    QFETCH(const QByteArray, text);
    QTEST(folded(text, Exact), "exact");
    QTEST(folded(text, Case), "byCase");
    QTEST(folded(text, Accents), "byAccents");
    QTEST(folded(text, All), "all");
}

void tst_Folding::words_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("words"); // with a bar between them
    const auto row = [](const char *name, const char *text, const char *words) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(words);
    };
    row("none", " .-_\xE2\x80\x94\xFF", "");
    row("file name", "my_report-2.pdf", "my|report|2|pdf");
    row("digits in a word", "IMG2024a 3D", "IMG2024a|3D");
    row("marks", "re\u0301sume\u0301", "re\u0301sume\u0301");
    row("apostrophe", "don\u2019t don't", "don|t|don|t");
    row("Chinese", "a\u4E2D\u56FD2", "a|\u4E2D|\u56FD|2");
    row("kana with its mark", "\u304B\u3099\u304F", "\u304B\u3099|\u304F");
    row("pictographs", "x\U0001F389\U0001F389y", "x|\U0001F389|\U0001F389|y");
    row("bytes that are no character", "caf\xE9.txt", "caf|txt");
}

void tst_Folding::words()
{
    QFETCH(const QByteArray, text);
    QByteArrayList found;
    QByteArrayView word;
    for (Words words(text); words.next(word);)
        found << word.toByteArray();
    QTEST(found.join('|'), "words");
}

// Eight characters are done at once, and room is made as it is needed.
void tst_Folding::longTextsFoldAsShortOnesDo()
{
    const QByteArray pattern = "Zz \u1F82\u00DFQ\u0390 "; // some grow to three times their size
    for (int length = 0; length < 64; ++length) {
        QByteArray text;
        QByteArray expected;
        for (int i = 0; i < length; ++i) {
            text += pattern.repeated(i % 3) + QByteArray(i, 'A');
            expected += folded(pattern, Case).repeated(i % 3) + QByteArray(i, 'a');
        }
        QCOMPARE(folded(text, Case), expected);
    }
}

void tst_Folding::longWordsAreCutBetweenCharacters()
{
    const QByteArray word(LongestIndexedWord, 'a');
    QCOMPARE(indexedWord(word), word);
    QCOMPARE(indexedWord(word + 'b'), word);
    QCOMPARE(indexedWord(word.chopped(1) + "\u00E9x"), word.chopped(1));
}

QTEST_APPLESS_MAIN(tst_Folding)
#include "tst_Folding.moc"
