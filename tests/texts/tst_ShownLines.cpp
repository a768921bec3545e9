#include "texts/FileBytes.h"
#include "texts/ShownLine.h"
#include "texts/Stretch.h"

#include "tests/support/TestFolder.h"
#include "tests/support/WithoutRights.h"

#include <algorithm>
#include <numeric>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

TextEncoding named(const QString &name)
{
    return *std::ranges::find(TextEncoding::all(), name, &TextEncoding::name);
}

QByteArray lines(int count, int length)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += QByteArray::number(i).leftJustified(length - 1, '.') + '\n';
    return text;
}

// All of the places where lines begin, joined from stretches read here and there.
std::vector<qint64> startsFrom(const FileBytes &file, const TextForm &form, qint64 step)
{
    std::vector<qint64> starts;
    for (qint64 at = 0; at < file.size(); at += step) {
        const Stretch stretch = Stretch::read(file, form, at, 2, 2);
        const int line = stretch.lineOf(at);
        if (line < 0 || stretch.start(line) > at || stretch.end(line) <= at)
            return { -1, at };
        for (int i = 0; i < stretch.lineCount(); ++i)
            starts.push_back(stretch.start(i));
    }
    std::ranges::sort(starts);
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    return starts;
}

} // namespace

class tst_ShownLines : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void encodingsAreSeenByTheirLook_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("encoding"); // empty: no text
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &encoding,
                            const QString &text = {}) {
            QTest::newRow(name) << bytes << encoding << text;
        };
        using namespace std::string_view_literals;
        const auto wide = [](std::string_view bytes) {
            return QByteArray(bytes.data(), qsizetype(bytes.size()));
        };
        row("nothing", "", u"UTF-8"_s);
        row("plain", "one\ttwo\r\n", u"UTF-8"_s, u"one\ttwo"_s);
        row("UTF-8",
            "Gr\xC3\xBC\xC3\x9F"
            "e \xF0\x9F\x8D\x83",
            u"UTF-8"_s, u"Grüße 🍃"_s);
        row("with mark", "\xEF\xBB\xBFx", u"UTF-8"_s, u"x"_s);
        row("broken after its mark", "\xEF\xBB\xBF\xE2\x82|\xED\xA0\x80|\xFF", u"UTF-8"_s,
            u"\uFFFD|\uFFFD\uFFFD\uFFFD|\uFFFD"_s);
        row("western",
            "Gr\xFC\xDF"
            "e \x80\x81",
            u"Windows-1252"_s, u"Grüße €\\x81"_s);
        row("little, marked", wide("\xFF\xFEh\0\xE4\0"sv), u"UTF-16 LE"_s, u"hä"_s);
        row("big, marked", wide("\xFE\xFF\0h\xD8\x3C\xDF\x43"sv), u"UTF-16 BE"_s, u"h🍃"_s);
        row("little by look", wide("l\0i\0n\0e\0\r\0\n\0"sv), u"UTF-16 LE"_s, u"line"_s);
        row("big by look", wide("\0l\0i\0n\0e\xD8\x00"sv), u"UTF-16 BE"_s, u"line\uFFFD"_s);
        row("four bytes", wide("\xFF\xFE\0\0x\0\0\0\0\0\x11\0"sv), u"UTF-32 LE"_s, u"x\uFFFD"_s);
        row("no text",
            wide("\x7F"
                 "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0\x3E\0"sv),
            {});
        row("no text without zeros", QByteArray("\x01\x02\x03\x04\x05").repeated(9), {});
        row("orders to terminals and to the eye",
            "\x1B[31m\xE2\x80\xAE"
            "abc\x07",
            u"UTF-8"_s, u"\\x1B[31m\\u202Eabc\\x07"_s);
    }
    void encodingsAreSeenByTheirLook()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, encoding);
        const auto seen = TextEncoding::of(bytes, true);
        QCOMPARE(seen ? seen->name() : QString(), encoding);
        if (!seen)
            return;
        const ShownLine shown = ShownLine::ofText(bytes, 0, *seen);
        QTEST(shown.text, "text");
        QCOMPARE(qsizetype(shown.bytes.size()), shown.text.size() + 1);
        QVERIFY(std::ranges::is_sorted(shown.bytes));
    }

    void aCharacterCutAtTheEndOfWhatWasReadBreaksNothing()
    {
        const QByteArray text = QString(u"ж"_s.repeated(50) + u"🍃"_s).toUtf8();
        for (int cut = 0; cut < 4; ++cut)
            QCOMPARE(TextEncoding::of(text.chopped(cut), false)->name(), u"UTF-8"_s);
        QCOMPARE(TextEncoding::of(text.chopped(1), true)->name(), u"Windows-1252"_s);
    }

    void everyEncodingComesBackAsItWasWritten()
    {
        for (const TextEncoding &encoding : TextEncoding::all()) {
            const bool isWide = encoding.form() != TextEncoding::Form::SingleByte;
            const QString text = isWide ? u"aé€🍃"_s : encoding.decoded("a\xC1\xE9");
            const auto bytes = encoding.encoded(text);
            QVERIFY2(bytes, qPrintable(encoding.name()));
            QCOMPARE(encoding.decoded(*bytes), text);
            QCOMPARE(encoding.encoded(u"漢"_s).has_value(), isWide);
        }
        QCOMPARE(named(u"KOI8-R"_s).decoded("\xF4\xD7"), u"Тв"_s);
    }

    void linesBeginAtTheSamePlacesFromEverywhere_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<int>("longest"); // bytes that a line may have
        const QString mixed =
            u"kurz\n\n"_s + u"ж"_s.repeated(9000) + u"\nx\n"_s + u"🍃"_s.repeated(3000) + u"\nend"_s;
        QTest::newRow("short") << lines(4000, 40) << u"UTF-8"_s << 40;
        QTest::newRow("just not cut") << lines(60, 2048) << u"UTF-8"_s << 2048;
        QTest::newRow("one line") << QByteArray(400'000, 'x') << u"UTF-8"_s << 2048;
        QTest::newRow("mixed") << mixed.toUtf8() << u"UTF-8"_s << 4104;
        for (const QString &wide : { u"UTF-16 LE"_s, u"UTF-16 BE"_s, u"UTF-32 BE"_s })
            QTest::newRow(qPrintable(wide)) << *named(wide).encoded(mixed) << wide << 4104;
        QTest::newRow("no character is whole") << QByteArray(100'000, '\x80') << u"UTF-8"_s << 2051;
    }
    void linesBeginAtTheSamePlacesFromEverywhere()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, encoding);
        QFETCH(const int, longest);
        const TestFolder folder;
        folder.write(u"text"_s, text);
        const auto file = FileBytes::open(folder.path(u"text"_s)).file;
        const TextForm form { named(encoding) };
        const auto starts = TextLines::starts(text, 0, form.encoding, form.end);
        QCOMPARE(startsFrom(*file, form, 997), starts);
        QString all;
        for (std::size_t i = 0; i < starts.size(); ++i) {
            const qint64 end = i + 1 < starts.size() ? starts[i + 1] : text.size();
            QVERIFY(end - starts[i] <= longest);
            all += form.encoding.decoded(QByteArrayView(text).sliced(starts[i], end - starts[i]));
        }
        QCOMPARE(all, form.encoding.decoded(text)); // no character is cut in two
    }

    void rowsOfBytesAreAsManyAsThereAre()
    {
        const QByteArray bytes("0123456789abcdef\x00\xFF~", 19);
        QCOMPARE(ShownLine::ofBytes(bytes.first(16), 0x1230, 8).text,
                 u"00001230  30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66  0123456789abcdef"_s);
        const ShownLine last = ShownLine::ofBytes(bytes.sliced(16), 16, 8);
        QCOMPARE(last.text, u"00000010  00 FF 7E"_s + QString(42, u' ') + u"..~"_s);
        QStringList marked;
        for (const auto &[start, length] : last.unitsOf(1, 3))
            marked.append(last.text.mid(start, length).trimmed());
        QCOMPARE(marked.join(u'|'), u"FF 7E|.~"_s);
        QCOMPARE(ShownLine::offsetDigits(qint64(1) << 32), 10);
    }

    void ofAFileOfAnySizeLittleIsRead()
    {
        const TestFolder folder;
        folder.shell(u"truncate -s 4T sparse && printf 'last\\nline' >> sparse"_s);
        const auto file = FileBytes::open(folder.path(u"sparse"_s)).file;
        for (const bool asBytes : { false, true }) {
            const TextForm form { .asBytes = asBytes };
            const Stretch end = Stretch::read(*file, form, file->size(), 100, 100);
            QVERIFY(end.isAtEnd() && !end.isAtStart());
            QVERIFY(end.lineCount() > 100);
            QVERIFY(end.bytes(end.lineCount() - 1).endsWith("line"));
            const Stretch middle = Stretch::read(*file, form, qint64(1) << 41, 100, 100);
            QVERIFY(middle.lineOf(qint64(1) << 41) >= 100);
            QVERIFY(middle.lineCount() < 10'000);
        }
    }

    void whatIsGoneIsNotRead()
    {
        const TestFolder folder;
        folder.write(u"log"_s, lines(2000, 50));
        const auto file = FileBytes::open(folder.path(u"log"_s)).file;
        folder.shell(u"truncate -s 120 log && mv log other && echo new > log"_s);
        const Stretch left = Stretch::read(*file, {}, 90'000, 50, 50);
        QCOMPARE(left.fileSize(), 120);
        QCOMPARE(left.lineCount(), 3);
        QVERIFY(left.isAtStart() && left.isAtEnd());
        folder.shell(u"printf more >> other"_s);
        QCOMPARE(Stretch::read(*file, {}, 120, 9, 9).bytes(2).toByteArray().last(4), "more");
        folder.shell(u": > other"_s);
        QCOMPARE(Stretch::read(*file, {}, 120, 9, 9).lineCount(), 0);
    }

    void whatTheSystemMakesUpIsRead()
    {
        const auto file = FileBytes::open(u"/proc/self/status"_s).file;
        QVERIFY(file && file->size() > 100);
        QVERIFY(Stretch::read(*file, {}, 0, 0, 50).bytes(0).startsWith("Name:"));
    }

    void whatIsNoFileIsRefused()
    {
        const TestFolder folder;
        folder.makeFolder(u"folder"_s);
        folder.write(u"closed"_s, "x");
        folder.shell(
            u"mkfifo pipe && ln -s pipe link && ln -s nowhere dangling && chmod 0 closed"_s);
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address { AF_UNIX, {} };
        const QByteArray here = QByteArray("/proc/self/cwd/s"); // paths of sockets are short
        QCOMPARE(::chdir(folder.bytes(u"."_s)), 0);
        std::copy(here.begin(), here.end(), address.sun_path);
        QCOMPARE(::bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        ::close(socket);
        const WithoutRights none;
        using enum FileBytes::Refusal;
        const std::pair<QString, FileBytes::Refusal> items[] = {
            { folder.path(u"folder"_s), Folder },
            { folder.path(u"pipe"_s), Pipe },
            { folder.path(u"link"_s), Pipe },
            { folder.path(u"s"_s), Socket },
            { u"/dev/zero"_s, Device },
            { folder.path(u"closed"_s), Error },
            { folder.path(u"dangling"_s), Error },
        };
        for (const auto &[path, refusal] : items) {
            const auto opened = FileBytes::open(path);
            QVERIFY2(!opened.file && opened.refusal == refusal, qPrintable(path));
            QCOMPARE(bool(opened.error), refusal == Error);
        }
    }
};

QTEST_GUILESS_MAIN(tst_ShownLines)

#include "tst_ShownLines.moc"
