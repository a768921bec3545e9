#include "texts/FileBytes.h"
#include "texts/FileSearch.h"

#include "tests/support/TestFolder.h"

namespace {

using enum FileSearch::Direction;

TextEncoding named(const QString &name)
{
    return *std::ranges::find(TextEncoding::all(), name, &TextEncoding::name);
}

FileSearch::Hit find(const TestFolder &folder, const SearchPattern &pattern, qint64 from,
                     FileSearch::Direction direction)
{
    FileSearch::Progress progress;
    return FileSearch::find(*FileBytes::open(folder.path(u"f"_s)).file, pattern, from, direction,
                            progress);
}

} // namespace

class tst_FileSearch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsMeantIsFound_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("searched");
        QTest::addColumn<bool>("anyCase");
        QTest::addColumn<int>("place"); // in characters; -1: none
        const auto row = [](const char *name, const QString &encoding, const QString &text,
                            const QString &searched, bool anyCase, int place) {
            QTest::newRow(name) << encoding << text << searched << anyCase << place;
        };
        const QString utf8 = u"UTF-8"_s;
        row("as it is", utf8, u"one Two two"_s, u"two"_s, false, 8);
        row("any case", utf8, u"one Two to"_s, u"tWO"_s, true, 4);
        row("any case, other letters", utf8, u"x ГРОМ Überall"_s, u"üBER"_s, true, 7);
        row("none", utf8, u"one two"_s, u"three"_s, true, -1);
        row("its start comes twice", utf8, u"aaaaaab"_s, u"aab"_s, false, 4);
        row("western, any case", u"Windows-1252"_s, u"ÄRGER über"_s, u"Über"_s, true, 6);
        row("wide", u"UTF-16 LE"_s, u"ab🍃c"_s, u"c"_s, false, 4);
        row("wide, any case", u"UTF-16 BE"_s, u"ab ÄC"_s, u"äc"_s, true, 3);
        // The bytes stand there before, but across two characters.
        row("wide, no half of one", u"UTF-16 BE"_s, u"\u6100\u6200ab"_s, u"\u0061\u0062"_s, false,
            2);
        row("four bytes", u"UTF-32 LE"_s, u"abc"_s, u"C"_s, true, 2);
    }
    void whatIsMeantIsFound()
    {
        QFETCH(const QString, encoding);
        QFETCH(const QString, text);
        QFETCH(const QString, searched);
        QFETCH(const bool, anyCase);
        QFETCH(const int, place);
        const TextEncoding used = named(encoding);
        const TestFolder folder;
        folder.write(u"f"_s, *used.encoded(text));
        const auto pattern = SearchPattern::ofText(
            searched, used, anyCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
        const qint64 offset = place < 0 ? -1 : used.encoded(text.first(place))->size();
        for (const auto direction : { Forwards, Backwards }) {
            const auto hit = find(folder, *pattern, direction == Forwards ? 0 : 1000, direction);
            QCOMPARE(hit.offset, offset);
            if (place >= 0)
                QCOMPARE(hit.length, used.encoded(searched)->size());
        }
    }

    void nothingIsMissedWhereTwoBlocksMeet()
    {
        for (const qint64 border : { 64 << 10, 128 << 10 })
            for (const int before : { 0, 1, 5, 9, 10 })
                for (const auto sensitivity : { Qt::CaseSensitive, Qt::CaseInsensitive })
                    for (const QString &word : { u"tenletters"_s, u"tenlettér"_s }) {
                        const TestFolder folder;
                        QByteArray bytes(200'000, 't');
                        const qint64 place = border - before;
                        bytes.replace(place, word.toUtf8().size(), word.toUtf8());
                        folder.write(u"f"_s, bytes);
                        const auto pattern = SearchPattern::ofText(word, {}, sensitivity);
                        QCOMPARE(find(folder, *pattern, 7, Forwards).offset, place);
                        QCOMPARE(find(folder, *pattern, 199'000, Backwards).offset, place);
                    }
    }

    void aSearchGoesOnFromHitToHitAndAround()
    {
        const TestFolder folder;
        folder.write(u"f"_s, "ab..ab..ab");
        const auto pattern = SearchPattern::ofText(u"ab"_s, {}, Qt::CaseSensitive);
        QList<qint64> forwards, backwards;
        qint64 from = 0;
        for (int i = 0; i < 4; ++i) {
            const auto hit = find(folder, *pattern, from, Forwards);
            forwards.append(hit.offset);
            QCOMPARE(hit.wentAround, i == 3);
            from = hit.offset + 1;
        }
        from = 8;
        for (int i = 0; i < 3; ++i) {
            const auto hit = find(folder, *pattern, from, Backwards);
            backwards.append(hit.offset);
            QCOMPARE(hit.wentAround, i == 2);
            from = hit.offset;
        }
        QCOMPARE(forwards, QList<qint64>({ 0, 4, 8, 0 }));
        QCOMPARE(backwards, QList<qint64>({ 4, 0, 8 }));
    }

    void bytesAreTypedByTheirDigits()
    {
        const TestFolder folder;
        folder.write(u"f"_s, QByteArray("a\r\nb\0\0c", 7));
        const std::pair<QString, qint64> rows[] = {
            { u"0d 0a"_s, 1 }, { u"0D0A"_s, 1 }, { u"00 00 63"_s, 4 }, { u"ff"_s, -1 }
        };
        for (const auto &[digits, place] : rows)
            QCOMPARE(find(folder, *SearchPattern::ofBytes(digits), 0, Forwards).offset, place);
        for (const QString &none : { QString(), u"0"_s, u"0x0a"_s, u"-1"_s, u"0d 0"_s, u"text"_s })
            QVERIFY2(!SearchPattern::ofBytes(none), qPrintable(none));
    }

    void whatWasNeverWrittenIsPassedOver()
    {
        const TestFolder folder;
        folder.shell(u"printf head > f && truncate -s 2T f && printf 'needle' >> f"_s);
        const qint64 place = qint64(2) << 40;
        const auto needle = SearchPattern::ofText(u"needle"_s, {}, Qt::CaseSensitive);
        QCOMPARE(find(folder, *needle, 0, Forwards).offset, place);
        QCOMPARE(find(folder, *SearchPattern::ofBytes(u"00 00 6e"_s), 0, Forwards).offset,
                 place - 2);
        QCOMPARE(find(folder, *SearchPattern::ofBytes(u"64 00 00"_s), 0, Forwards).offset, 3);
        QCOMPARE(
            find(folder, *SearchPattern::ofText(u"head"_s, {}, Qt::CaseSensitive), place, Backwards)
                .offset,
            0);
        // Between two holes, at a place that is the first of no block.
        folder.shell(u"printf island | dd of=f bs=1 seek=1000000000001 conv=notrunc status=none"_s);
        QCOMPARE(find(folder, *SearchPattern::ofText(u"island"_s, {}, Qt::CaseSensitive), place,
                      Backwards)
                     .offset,
                 1'000'000'000'001);
    }

    void aCancelledSearchEnds()
    {
        const TestFolder folder;
        folder.write(u"f"_s, "it is here");
        FileSearch::Progress progress;
        progress.isCancelled = true;
        const auto hit =
            FileSearch::find(*FileBytes::open(folder.path(u"f"_s)).file,
                             *SearchPattern::ofBytes(u"68 65"_s), 0, Forwards, progress);
        QCOMPARE(hit.offset, -1);
        QCOMPARE(progress.done, 0);
    }
};

QTEST_GUILESS_MAIN(tst_FileSearch)

#include "tst_FileSearch.moc"
