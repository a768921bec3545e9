#include "platform/desktop/DesktopPrograms.h"
#include "platform/FileName.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_Programs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endTellsHowTheProgramEnded_data();
    void endTellsHowTheProgramEnded();
    void missingProgramIsToldApartFromAFailedOne();
    void talkativeProgramIsReadToItsEndAndCutShort();
    void programRunsInAGroupOfItsOwnWithDefaultSignals();
    void whatAProgramLeavesBehindIsNotWaitedFor();
    void argumentsAreBytesAndNoShellReadsThem();

private:
    ProgramEnd runShell(const QString &script, const std::function<void(pid_t)> &started = {})
    {
        return DesktopPrograms().run({ u"/bin/sh"_s, u"-c"_s, script }, started);
    }
};

void tst_Programs::endTellsHowTheProgramEnded_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("errorText");
    QTest::newRow("success") << "true" << 0 << "";
    QTest::newRow("failure with a message")
        << "echo no such file >&2; exit 3" << 3 << "no such file";
    QTest::newRow("killed") << "kill -TERM $$" << 128 + SIGTERM << "";
    QTest::newRow("input is empty, not ours") << "read line || exit 7" << 7 << "";
    QTest::newRow("output goes nowhere") << "echo chatter" << 0 << "";
}

void tst_Programs::endTellsHowTheProgramEnded()
{
    QFETCH(QString, script);
    const ProgramEnd end = runShell(script);
    QVERIFY(end.started);
    QTEST(end.status, "status");
    QTEST(end.errorText, "errorText");
}

void tst_Programs::missingProgramIsToldApartFromAFailedOne()
{
    bool called = false;
    const ProgramEnd end =
        DesktopPrograms().run({ u"/nonexistent/program"_s }, [&](pid_t) { called = true; });
    QVERIFY(!end.started);
    QVERIFY(!end.succeeded());
    QVERIFY(!end.errorText.isEmpty());
    QVERIFY(!called);
}

void tst_Programs::talkativeProgramIsReadToItsEndAndCutShort()
{
    // Far more than a pipe holds: a reader that stopped at its limit would hang the program.
    const ProgramEnd end = runShell(u"yes complaint | head -c 1000000 >&2; exit 5"_s);
    QCOMPARE(end.status, 5);
    QVERIFY(end.errorText.startsWith(u"complaint\n"));
    QVERIFY(end.errorText.size() <= 4096);
}

void tst_Programs::programRunsInAGroupOfItsOwnWithDefaultSignals()
{
    pid_t group = 0;
    pid_t process = 0;
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    const ProgramEnd end = runShell(u"sleep 0.2; kill -PIPE $$"_s, [&](pid_t started) {
        process = started;
        group = getpgid(started);
    });
    std::signal(SIGPIPE, old);
    QCOMPARE(group, process);
    QVERIFY(group != getpgrp());
    QCOMPARE(end.status, 128 + SIGPIPE);
}

void tst_Programs::whatAProgramLeavesBehindIsNotWaitedFor()
{
    QElapsedTimer timer;
    timer.start();
    QVERIFY(runShell(u"sleep 20 & exit 0"_s).succeeded());
    QVERIFY(timer.elapsed() < 10000);
}

void tst_Programs::argumentsAreBytesAndNoShellReadsThem()
{
    const QTemporaryDir folder;
    const QByteArray name = QByteArray("/-m $(touch x) \"'\n\xff", 20);
    const QByteArray path = folder.path().toUtf8() + name;
    QVERIFY(DesktopPrograms().run({ u"/bin/mkdir"_s, FileName::fromBytes(path) }).succeeded());
    struct stat status { };
    QCOMPARE(stat(path.constData(), &status), 0);
    // Qt cannot remove a name that is no text.
    QCOMPARE(rmdir(path.constData()), 0);
}

QTEST_GUILESS_MAIN(tst_Programs)
#include "tst_Programs.moc"
