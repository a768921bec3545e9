#include "tests/indexer/IndexerWorld.h"

namespace {

// What became of a process of its own in which the function runs: as waitpid(2) tells.
int inProcess(const std::function<void()> &work)
{
    const pid_t process = ::fork();
    if (process == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    return status;
}

void runUntilIdle(PlainFiles &files)
{
    Indexer indexer(
        files, [] { return QStringList(); }, Running::quick());
    indexer.idle = [] { ::_exit(0); };
    indexer.run();
}

} // namespace

class tst_IndexUpkeep : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home.reset();
        home.emplace();
    }

    void makesTheIndexAnew_data();
    void makesTheIndexAnew();
    void theIndexStaysLockedWhileItIsOpen();
    void waitsForAPlaceToWrite();
    void aFileThatEndsTheReaderIsReadOnce();
    void aFileThatWasLateIsReadAgain();
    void goesOnAfterBeingKilled();
    void keepsWhatIsThereWhenTheDiskIsFull();
    void programsTakeTurnsAndEndWithTheirInput();

private:
    std::optional<Home> home;
};

void tst_IndexUpkeep::makesTheIndexAnew_data()
{
    QTest::addColumn<QByteArray>("content"); // of the index file
    QTest::addColumn<bool>("running"); // it is exchanged under the indexer
    QTest::newRow("no database") << QByteArray(100000, 'x') << false;
    QTest::newRow("cut") << QByteArray("cut") << false;
    QTest::newRow("another version") << QByteArray("PRAGMA user_version = 99") << false;
    QTest::newRow("of another home") << QByteArray("UPDATE state SET value = 'x'") << false;
    QTest::newRow("a folder") << QByteArray("$rm index.sqlite; mkdir index.sqlite") << false;
    QTest::newRow("a folder with something in it")
        << QByteArray("$rm index.sqlite; mkdir -p index.sqlite/a") << false;
    QTest::newRow("a FIFO") << QByteArray("$rm index.sqlite; mkfifo index.sqlite") << false;
    QTest::newRow("a link") << QByteArray("$rm index.sqlite; ln -s x index.sqlite") << false;
    QTest::newRow("not to be written") << QByteArray("$chmod 400 index.sqlite") << false;
    QTest::newRow("deleted while in use") << QByteArray() << true;
}

void tst_IndexUpkeep::makesTheIndexAnew()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, running);
    home->write("file.txt", "text");
    Known all { { "file.txt", "text" } };
    PlainFiles files;
    auto indexer = std::make_unique<Running>(files);
    QTRY_COMPARE(known(), all);
    if (!running)
        indexer.reset();
    QFile file(IndexFile::path());
    if (content.isEmpty()) {
        QVERIFY(IndexFile::remove(IndexFile::path()));
    } else if (content.startsWith('$')) {
        home->folder.shell(u"cd cache/org.twinleaf.Twinleaf; "_s
                           + QString::fromLatin1(content.mid(1)));
        home->write("file.txt", "more");
        all["file.txt"] = "more";
    } else if (content == "cut") {
        QVERIFY(file.resize(file.size() / 2));
    } else if (content.startsWith('x')) {
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
        file.close();
    } else {
        Database database;
        QVERIFY(database.open(IndexFile::path(), Database::Access::Write));
        QVERIFY(database.run(content));
    }
    if (!running) {
        if (content != "cut" && !content.contains("chmod"))
            QCOMPARE(known(), NoIndex);
        indexer = std::make_unique<Running>(files);
    }
    QTRY_COMPARE(known(), all);
    QTRY_COMPARE(withWord(all.value("file.txt")), QList<QByteArray> { "file.txt" });
    QVERIFY(isSound());
}

// A program that finds no lock takes itself for the last one, and removes the log that is written.
void tst_IndexUpkeep::theIndexStaysLockedWhileItIsOpen()
{
    Database database;
    QCOMPARE(IndexFile::openForWriting(IndexFile::path(), database), IndexFile::State::Good);
    const Descriptor other(::open(FileName::toBytes(IndexFile::path()), O_RDWR | O_CLOEXEC));
    struct flock lock { };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000002; // SQLite's shared bytes, see its file format
    lock.l_len = 510;
    QCOMPARE(::fcntl(other.number(), F_OFD_GETLK, &lock), 0);
    QCOMPARE(lock.l_type, short(F_RDLCK));
}

void tst_IndexUpkeep::waitsForAPlaceToWrite()
{
    home->write("file.txt", "text");
    home->folder.write(u"cache"_s); // a file where the folder is to be
    PlainFiles files;
    static std::atomic<int> warnings = 0;
    warnings = 0;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
        if (message.contains(u"cannot be locked"_s))
            ++warnings;
    });
    {
        const Running running(files);
        QTRY_VERIFY(warnings > 1);
        home->remove("../cache");
        QTRY_COMPARE(known(), (Known { { "file.txt", "text" } }));
    }
    qInstallMessageHandler(nullptr);
}

void tst_IndexUpkeep::aFileThatEndsTheReaderIsReadOnce()
{
    home->write("crash.txt", "bad");
    home->write("good.txt", "good");
    PlainFiles files;
    for (int start = 0; start < 2; ++start) {
        const Running running(files);
        QTRY_VERIFY(running.idle && known().value("good.txt") == "good");
        QCOMPARE(files.count, 2);
    }
    const Running running(files);
    home->write("crash.txt", "bad again");
    QTRY_COMPARE(files.count, 3);
}

void tst_IndexUpkeep::aFileThatWasLateIsReadAgain()
{
    home->write("slow.txt", "slow");
    PlainFiles files;
    files.late = 2;
    const Running running(files);
    QTRY_COMPARE(known(), (Known { { "slow.txt", "slow" } }));
    files.late = 100; // it is the file, after all
    home->write("slow.txt", "slower");
    QTRY_COMPARE(known(), (Known { { "slow.txt", {} } }));
}

// At each file once, in a process of its own.
void tst_IndexUpkeep::goesOnAfterBeingKilled()
{
    constexpr int Files = 30;
    Known all;
    for (int number = 0; number < Files; ++number) {
        const QByteArray folder = "folder " + QByteArray::number(number % 5);
        if (number < 5)
            home->makeFolder(folder);
        all.insert(folder, {});
        all.insert(folder + "/file " + QByteArray::number(number), "text");
        home->write(folder + "/file " + QByteArray::number(number), "text");
    }
    for (const int killAt : { 1, 7, Files }) {
        QCOMPARE(inProcess([killAt] {
                     PlainFiles files;
                     files.killAt = killAt;
                     runUntilIdle(files);
                 }),
                 SIGKILL);
        QVERIFY(isSound());
    }
    PlainFiles files;
    const Running running(files);
    QTRY_COMPARE(known(), all);
    QTRY_COMPARE(withWord("text").size(), Files);
}

void tst_IndexUpkeep::keepsWhatIsThereWhenTheDiskIsFull()
{
    home->write("first.txt", "first");
    Known all { { "first.txt", "first" } };
    PlainFiles files;
    {
        const Running running(files);
        QTRY_COMPARE(known(), all);
    }
    const QByteArray longName(200, 'n');
    for (int number = 0; number < 2000; ++number) {
        const QByteArray name = longName + QByteArray::number(number);
        home->write(name, "text");
        all.insert(name, "text");
    }
    constexpr int Told = 7;
    QCOMPARE(inProcess([] {
                 const rlimit small { 300000, 300000 }; // bytes of each file
                 ::setrlimit(RLIMIT_FSIZE, &small);
                 ::signal(SIGXFSZ, SIG_IGN);
                 qInstallMessageHandler(
                     [](QtMsgType, const QMessageLogContext &, const QString &message) {
                         if (message.contains(u"cannot be written"_s))
                             ::_exit(Told);
                     });
                 PlainFiles inner;
                 runUntilIdle(inner);
             }),
             Told << 8);
    QCOMPARE(known(), (Known { { "first.txt", "first" } }));
    const Running running(files);
    QTRY_COMPARE(known(), all);
}

void tst_IndexUpkeep::programsTakeTurnsAndEndWithTheirInput()
{
    home->write("file.txt", "text");
    QProcess first;
    QProcess second;
    for (QProcess *process : { &first, &second }) {
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(QString::fromLatin1(TWINLEAF_INDEX), {});
        QVERIFY(process->waitForStarted());
    }
    QTRY_COMPARE(known().keys(), QByteArrayList { "file.txt" });
    first.closeWriteChannel();
    QVERIFY(first.state() == QProcess::NotRunning || first.waitForFinished());
    home->write("later.txt", "text");
    QTRY_COMPARE(known().keys(), (QByteArrayList { "file.txt", "later.txt" }));
    second.closeWriteChannel();
    QVERIFY(second.state() == QProcess::NotRunning || second.waitForFinished());
}

QTEST_GUILESS_MAIN(tst_IndexUpkeep)
#include "tst_IndexUpkeep.moc"
