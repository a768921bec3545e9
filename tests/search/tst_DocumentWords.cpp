#include "files/Folding.h"
#include "search/DocumentWords.h"

#include <QSet>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_DocumentWords : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wordsAreThoseOfTheWholeText_data();
    void wordsAreThoseOfTheWholeText();
    void longTextsLoseNoWord();
    void whatTheFormatSaysIsNoWord();
};

namespace {

QSet<QByteArray> split(QByteArrayView words)
{
    const QByteArrayList list = words.toByteArray().simplified().split(' ');
    return { list.begin(), list.end() };
}

// As somebody who searches folds and splits.
QSet<QByteArray> expected(const QByteArray &text)
{
    const QByteArray folded = Folding::folded(text, Folding::All);
    Folding::Words words(folded);
    QSet<QByteArray> all;
    for (QByteArrayView word; words.next(word);)
        all.insert(Folding::indexedWord(word).toByteArray());
    return all;
}

} // namespace

void tst_DocumentWords::wordsAreThoseOfTheWholeText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("plain") << "The quick, brown fox: jumps_over.the-lazy \"dog\" 42 the THE"_ba;
    QTest::newRow("accents in and between")
        << "Straße (grüne-Äpfel) foo-bär bar\u00A0baz cafe\u0301 x"_ba;
    QTest::newRow("a mark behind a plain letter") << "first e\u0301te\u0301, last"_ba;
    QTest::newRow("no spaces") << "ab日本語cd Xあy"_ba;
    QTest::newRow("unseen characters") << "soft\u00ADhyphen zero\u200Bwidth end"_ba;
    QTest::newRow("no UTF-8") << "a\xFF"
                                 "b \xC3( tail\xE2\x82"_ba;
    QTest::newRow("control characters") << QByteArray("a\0b\x7F"
                                                      "c\td\x1B"
                                                      "e",
                                                      9);
    QTest::newRow("long words") << QByteArray(100, 'x') + ' ' + QByteArray("\xC3\xA4").repeated(80)
            + " y" + QByteArray(63, 'z') + QByteArray("\xC3\xB6");
}

void tst_DocumentWords::wordsAreThoseOfTheWholeText()
{
    QFETCH(const QByteArray, text);
    DocumentWords words;
    words.ofText("other words of another text, which are not to be seen"); // the memory is reused
    QCOMPARE(split(words.ofText(text)), expected(text));
}

void tst_DocumentWords::longTextsLoseNoWord()
{
    QByteArray plain;
    QByteArray accents;
    for (int number = 0; number < 20000; ++number) {
        plain += "word" + QByteArray::number(number) + ' ';
        accents += "wörd" + QByteArray::number(number) + ' ';
    }
    DocumentWords words;
    QCOMPARE(split(words.ofText(plain)), expected(plain));
    QCOMPARE(split(words.ofText(accents + plain)), expected(accents + plain));
}

void tst_DocumentWords::whatTheFormatSaysIsNoWord()
{
    const QList<MetadataAttribute> attributes {
        { u"kMDItemTitle"_s, u"A Plan"_s },
        { u"kMDItemVersion"_s, u"1.4"_s },
        { u"kMDItemSecurityMethod"_s, u"None"_s },
        { u"kMDItemNumberOfPages"_s, 12LL },
        { u"kMDItemAuthors"_s, QStringList { u"Ann"_s, u"Zoë"_s } },
    };
    DocumentWords words;
    QCOMPARE(split(words.ofAttributes(attributes)), split("a plan ann zoe"));
}

QTEST_APPLESS_MAIN(tst_DocumentWords)
#include "tst_DocumentWords.moc"
