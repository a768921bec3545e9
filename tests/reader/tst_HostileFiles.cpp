#include "platform/ReaderProcess.h"
#include "tests/reader/Samples.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <csignal>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

using namespace Samples;
using namespace std::chrono_literals;
using Outcome = ForeignFiles::Outcome;

namespace {

QByteArray stateOf(pid_t process, const QByteArray &field)
{
    QFile file(u"/proc/%1/status"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith(field + ":"))
            return line.mid(field.size() + 1).trimmed();
    return {};
}

bool hasEnded(pid_t process)
{
    const QByteArray state = stateOf(process, "State");
    return state.isEmpty() || state.startsWith('Z') || state.startsWith('X');
}

} // namespace

// Whatever is read, or happens to who reads it: it costs one file, and no more than a limit.
class tst_HostileFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("PATH", TWINLEAF_READER_FOLDER ":" + qgetenv("PATH")); }
    void init() { _folder.write(u"good.txt"_s, "good"); }
    void hostileFilesCostThemselves_data();
    void hostileFilesCostThemselves();
    void hugeTextIsCut();
    void tagsAreCutAndCleaned();
    void whatIsNoFileHoldsNothing();
    void aFileThatMayBeWrittenIsNotHandedOver();
    void aHugePictureIsRefusedByItsHeader();
    void readersThatHangAreEnded();
    void readersThatEndedBetweenFilesCostNone();
    void aReaderThatAnotherEndsSaysNothing();
    void givingUpAnswersAtOnce();
    void theReaderEndsWithItsProgram();
    void theRunningReaderIsConfined();

private:
    bool goodFileIsRead(ReaderProcess &reader)
    {
        ForeignContents contents;
        return reader.read(opened(_folder, u"good.txt"_s).number(), u"good.txt"_s, contents)
            == Outcome::Read
            && contents.text == u"good";
    }

    TestFolder _folder;
};

void tst_HostileFiles::hostileFilesCostThemselves_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<int>>("outcomes"); // that are right
    QTest::addColumn<QString>("unseen");
    const QList<int> read { int(Outcome::Read) };
    const QList<int> readOrFailed { int(Outcome::Read), int(Outcome::Failed) };
    QTest::newRow("pages that hold themselves")
        << u"a.pdf"_s
        << pdf({ "<< /Type /Catalog /Pages 2 0 R >>",
                 "<< /Type /Pages /Kids [2 0 R 2 0 R] /Count 2000000000 >>", "<< >>" })
        << readOrFailed << QString();
    QByteArray lol("<!DOCTYPE m [<!ENTITY l0 'lollollollollollollol'>");
    for (int level = 1; level < 12; ++level)
        lol += "<!ENTITY l" + QByteArray::number(level) + " '"
            + ("&l" + QByteArray::number(level - 1) + ";").repeated(10) + "'>";
    QTest::newRow("entities of entities")
        << u"a.odt"_s << zip({ { "meta.xml", lol + "]><m><title>&l11;</title></m>" } }) << read
        << u"lollol"_s;
    QTest::newRow("an entity that is another file")
        << u"a.odt"_s
        << zip({ { "content.xml",
                   "<!DOCTYPE m [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><m><p>&e;</p></m>" } })
        << read << u"root"_s;
    QTest::newRow("a document that unpacks without end")
        << u"a.docx"_s
        << zip({ { "word/document.xml", "<d><t>" + QByteArray(130 << 20, 'a') + "</t></d>" } })
        << readOrFailed << QString();
    QTest::newRow("groups in groups")
        << u"a.rtf"_s << "{\\rtf1" + QByteArray(1 << 20, '{') << read << QString();
    QTest::newRow("tags without end")
        << u"a.html"_s << QByteArray("<html><a href=\"").repeated(1 << 16) << read << QString();
    QTest::newRow("nothing but opened tags")
        << u"a.html"_s << "<html>" + QByteArray("<a=' ").repeated(1 << 16) << read << QString();
    QTest::newRow("quotes without end")
        << u"a.html"_s << "<html>" + QByteArray("<a ='> ='").repeated(1 << 19) << read << QString();
    QByteArray broken = heif(twoColors(64, 64), heif_compression_HEVC);
    broken.truncate(broken.size() / 2);
    QTest::newRow("half a picture") << u"a.heic"_s << broken << readOrFailed << QString();
}

void tst_HostileFiles::hostileFilesCostThemselves()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QList<int>, outcomes);
    QFETCH(QString, unseen);
    ReaderProcess reader;
    _folder.write(name, bytes);
    ForeignContents contents;
    const Outcome outcome = reader.read(opened(_folder, name).number(), name, contents);
    QVERIFY2(outcomes.contains(int(outcome)), qPrintable(QString::number(int(outcome))));
    QVERIFY(contents.text.size() <= ReaderWords::TextLimit);
    for (const MetadataAttribute &attribute : contents.attributes)
        QVERIFY(unseen.isEmpty() || !attribute.value.toString().contains(unseen));
    QVERIFY(unseen.isEmpty() || !contents.text.contains(unseen));
    QVERIFY(goodFileIsRead(reader));
}

void tst_HostileFiles::hugeTextIsCut()
{
    // A line of 4 GB, of which the disk holds but the beginning.
    _folder.write(u"line.txt"_s, QByteArray(1 << 20, 'a'));
    QCOMPARE(truncate(_folder.bytes(u"line.txt"_s), qint64(4) << 30), 0);
    ReaderProcess reader(1ms); // it takes longer, but it gets on
    ForeignContents contents;
    QCOMPARE(reader.read(opened(_folder, u"line.txt"_s).number(), u"line.txt"_s, contents),
             Outcome::Read);
    QCOMPARE(contents.text.size(), ReaderWords::TextLimit);
    QVERIFY(contents.textWasCut && contents.text.startsWith(u"aaa"));
}

void tst_HostileFiles::tagsAreCutAndCleaned()
{
    _folder.write(u"a.mp3"_s, id3("TIT2", QByteArray("a\0b", 3) + QByteArray(10 << 20, 'c')));
    ReaderProcess reader;
    ForeignContents contents;
    QCOMPARE(reader.read(opened(_folder, u"a.mp3"_s).number(), u"a.mp3"_s, contents),
             Outcome::Read);
    QCOMPARE(contents.attributes.size(), 1);
    const QString title = contents.attributes.first().value.toString();
    QVERIFY(title.startsWith(u'a') && !title.contains(QChar(0)));
    QVERIFY(title.size() <= ReaderWords::AttributeLimit);
}

void tst_HostileFiles::whatIsNoFileHoldsNothing()
{
    QCOMPARE(mkfifo(_folder.bytes(u"fifo"_s), 0600), 0);
    _folder.makeFolder(u"folder"_s);
    ReaderProcess reader;
    ForeignContents contents;
    for (const QString &name : { u"fifo"_s, u"folder"_s })
        QCOMPARE(reader.read(opened(_folder, name).number(), name, contents), Outcome::Nothing);
    const Descriptor device(open("/dev/zero", O_RDONLY | O_CLOEXEC));
    QCOMPARE(reader.read(device.number(), u"zero"_s, contents), Outcome::Nothing);
    QVERIFY(goodFileIsRead(reader));
}

void tst_HostileFiles::aFileThatMayBeWrittenIsNotHandedOver()
{
    const Descriptor file(open(_folder.bytes(u"good.txt"_s), O_RDWR | O_CLOEXEC));
    ReaderProcess reader;
    ForeignContents contents;
    QTest::ignoreMessage(QtWarningMsg,
                         "A file that can be written to is not handed to the reader.");
    QCOMPARE(reader.read(file.number(), u"good.txt"_s, contents), Outcome::Failed);
    QVERIFY(!reader.process());
}

void tst_HostileFiles::aHugePictureIsRefusedByItsHeader()
{
    QByteArray png = encoded(twoColors(2, 2), "png");
    const QByteArray side("\0\x0F\x42\x40", 4); // 1,000,000
    png.replace(16, 8, side + side);
    const auto sum = [](const QByteArray &bytes) {
        quint32 remainder = ~0U;
        for (const char byte : bytes) {
            remainder ^= quint8(byte);
            for (int bit = 0; bit < 8; ++bit)
                remainder = (remainder >> 1) ^ (remainder & 1 ? 0xEDB88320U : 0U);
        }
        return ~remainder;
    };
    QByteArray checked(4, '\0');
    qToBigEndian(sum(png.mid(12, 17)), checked.data());
    png.replace(29, 4, checked);
    _folder.write(u"a.png"_s, png);
    ReaderProcess reader;
    QImage image;
    QSize size;
    QCOMPARE(reader.picture(opened(_folder, u"a.png"_s).number(), { 100, 100 }, image, size),
             Outcome::Failed);
    const auto process = reader.process();
    QVERIFY(process && goodFileIsRead(reader));
    QCOMPARE(reader.process(), process); // it was no fight
}

void tst_HostileFiles::readersThatHangAreEnded()
{
    ReaderProcess reader(200ms);
    QTRY_VERIFY(goodFileIsRead(reader)); // the machine may be busy
    const pid_t process = *reader.process();
    kill(process, SIGSTOP);
    ForeignContents contents;
    QCOMPARE(reader.read(opened(_folder, u"good.txt"_s).number(), u"good.txt"_s, contents),
             Outcome::Late);
    QVERIFY(hasEnded(process));
    QTRY_VERIFY(goodFileIsRead(reader));
    QVERIFY(reader.process() != process);
}

void tst_HostileFiles::readersThatEndedBetweenFilesCostNone()
{
    ReaderProcess reader;
    QVERIFY(goodFileIsRead(reader));
    const pid_t process = *reader.process();
    kill(process, SIGKILL);
    QTRY_VERIFY(hasEnded(process));
    QVERIFY(goodFileIsRead(reader));
}

void tst_HostileFiles::aReaderThatAnotherEndsSaysNothing()
{
    ReaderProcess reader;
    QVERIFY(goodFileIsRead(reader));
    const pid_t process = *reader.process();
    kill(process, SIGSTOP);
    Outcome outcome = Outcome::Read;
    const Descriptor file = opened(_folder, u"good.txt"_s);
    std::thread asking([&] {
        ForeignContents contents;
        outcome = reader.read(file.number(), u"good.txt"_s, contents);
    });
    kill(process, SIGKILL);
    asking.join();
    // It may have been gone before it was asked.
    QVERIFY(outcome == Outcome::Late || outcome == Outcome::Read);
    QVERIFY(goodFileIsRead(reader));
}

void tst_HostileFiles::givingUpAnswersAtOnce()
{
    ReaderProcess reader(1h);
    QVERIFY(goodFileIsRead(reader));
    kill(*reader.process(), SIGSTOP);
    ForeignContents contents;
    Outcome outcome = Outcome::Read;
    const Descriptor file = opened(_folder, u"good.txt"_s);
    std::thread asking([&] { outcome = reader.read(file.number(), u"good.txt"_s, contents); });
    reader.giveUp();
    asking.join();
    QCOMPARE(outcome, Outcome::NoReader);
}

void tst_HostileFiles::theReaderEndsWithItsProgram()
{
    // Much to search in: it is at work when its program is gone.
    _folder.write(u"long.pdf"_s, "%PDF-1.4\n");
    QCOMPARE(truncate(_folder.bytes(u"long.pdf"_s), qint64(1) << 30), 0);
    const Descriptor file = opened(_folder, u"long.pdf"_s);
    int told[2];
    QCOMPARE(pipe2(told, O_CLOEXEC), 0);
    prctl(PR_SET_CHILD_SUBREAPER, 1); // it becomes our child, and tells us what ended it
    const pid_t program = fork();
    if (program == 0) {
        ReaderProcess reader;
        ForeignContents contents;
        goodFileIsRead(reader);
        const pid_t process = reader.process().value_or(-1);
        if (write(told[1], &process, sizeof process) == sizeof process)
            reader.read(file.number(), u"long.pdf"_s, contents);
        pause();
        _exit(0);
    }
    pid_t process = -1;
    QCOMPARE(read(told[0], &process, sizeof process), ssize_t(sizeof process));
    close(told[0]);
    close(told[1]);
    QVERIFY(process > 0);
    kill(program, SIGKILL);
    QCOMPARE(waitpid(program, nullptr, 0), program);
    QTRY_VERIFY(hasEnded(process));
    int status = 0;
    QCOMPARE(waitpid(process, &status, 0), process);
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGKILL); // which no file can have it ignore
}

void tst_HostileFiles::theRunningReaderIsConfined()
{
    ReaderProcess reader;
    QVERIFY(goodFileIsRead(reader));
    const pid_t process = *reader.process();
    QCOMPARE(stateOf(process, "NoNewPrivs"), QByteArray("1"));
    QCOMPARE(stateOf(process, "Threads"), QByteArray("1"));
    QFile limits(u"/proc/%1/limits"_s.arg(process));
    QVERIFY(limits.open(QIODevice::ReadOnly));
    const QByteArray limited = limits.readAll().simplified();
    QVERIFY(limited.contains("Max file size 0 0 bytes"));
    QVERIFY(QRegularExpression(u"Max cpu time \\d+ \\d+ seconds"_s)
                .match(QString::fromLatin1(limited))
                .hasMatch());
    // Nothing is open but what it was given.
    const QStringList descriptors =
        QDir(u"/proc/%1/fd"_s.arg(process)).entryList(QDir::System | QDir::Files);
    QVERIFY2(descriptors.size() <= 8, qPrintable(descriptors.join(u' ')));
}

QTEST_GUILESS_MAIN(tst_HostileFiles)
#include "tst_HostileFiles.moc"
