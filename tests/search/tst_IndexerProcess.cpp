#include "search/IndexerProcess.h"
#include "tests/support/TestFolder.h"

#include <csignal>

using namespace std::chrono_literals;

// With a script in the indexer's place, which notes each start and each end of its input.
class tst_IndexerProcess final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runsFromTheStartToTheEnd();
    void isStartedAgain();
    void whatCannotBeStartedIsTriedAgain();

private:
    static QByteArray script(const TestFolder &folder)
    {
        folder.write(u"indexer"_s,
                     "#!/bin/sh\ncd \"${0%/*}\"\necho >> starts\ncat\necho >> ends\n");
        folder.shell(u"chmod +x indexer"_s);
        return folder.bytes(u"indexer"_s);
    }
    static qsizetype starts(const TestFolder &folder) { return folder.read(u"starts"_s).size(); }
    static bool isGone(pid_t process) { return ::kill(process, 0) != 0 && errno == ESRCH; }
};

void tst_IndexerProcess::runsFromTheStartToTheEnd()
{
    const TestFolder folder;
    pid_t process = -1;
    {
        IndexerProcess indexer(script(folder), 1h);
        indexer.start();
        indexer.start();
        process = indexer.process();
        QVERIFY(process > 0);
        QTRY_COMPARE(starts(folder), 1);
    }
    QVERIFY(isGone(process)); // and no zombie
    QCOMPARE(folder.read(u"ends"_s), QByteArray("\n")); // its input did
}

void tst_IndexerProcess::isStartedAgain()
{
    const TestFolder folder;
    IndexerProcess indexer(script(folder), 1ms);
    indexer.start();
    for (int times = 1; times < 4; ++times) {
        QTRY_COMPARE(starts(folder), times);
        const pid_t process = indexer.process();
        QTest::ignoreMessage(QtWarningMsg, "The indexer has ended with 9");
        ::kill(process, SIGKILL);
        QTRY_VERIFY(indexer.process() != process);
        QVERIFY(isGone(process));
    }
    QTRY_COMPARE(starts(folder), 4);
}

void tst_IndexerProcess::whatCannotBeStartedIsTriedAgain()
{
    const TestFolder folder;
    const QByteArray program = folder.bytes(u"indexer"_s);
    IndexerProcess indexer(program, 100ms);
    const QByteArray warning = '"' + program + "\" cannot be started: No such file or directory";
    QTest::ignoreMessage(QtWarningMsg, warning);
    indexer.start();
    QCOMPARE(indexer.process(), -1);
    script(folder);
    QTRY_COMPARE(starts(folder), 1);
}

QTEST_GUILESS_MAIN(tst_IndexerProcess)
#include "tst_IndexerProcess.moc"
