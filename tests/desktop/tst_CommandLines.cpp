#include "platform/desktop/DesktopPrograms.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <csignal>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

bool lives(pid_t process)
{
    return process > 0 && kill(process, 0) == 0;
}

} // namespace

class tst_CommandLines : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCommandComesOut_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QByteArray>("errors");
        const QByteArray none;
        QTest::newRow("words") << u"printf [%s] a  b"_s << 0 << 0 << QByteArray("[a][][b]") << none;
        QTest::newRow("in its folder")
            << u"./tool"_s << 0 << 3 << none << QByteArray("out of order");
        QTest::newRow("input is at its end") << u"cat"_s << 0 << 0 << none << none;
        QTest::newRow("no terminal")
            << u"head -c1 /dev/tty"_s << 0 << 1 << none << QByteArray("No such device or address");
        QTest::newRow("unknown") << u"xyz"_s << ENOENT << 127 << none
                                 << QByteArray("xyz: command not found");
        QTest::newRow("nothing") << QString() << ENOENT << 127 << none
                                 << QByteArray(": command not found");
        QTest::newRow("no program") << u"/"_s << EACCES << 127 << none << none;
    }
    void aCommandComesOut()
    {
        QFETCH(QString, line);
        TestFolder folder;
        folder.write(u"tool"_s, "#!/bin/sh\necho out of order >&2; exit 3\n");
        QVERIFY(chmod(folder.bytes(u"tool"_s), 0755) == 0);
        CommandEnd end;
        run(folder.path(), line, [&](const CommandEnd &ended) { end = ended; });
        QTEST(end.error, "error");
        QTEST(end.status, "status");
        QTEST(end.output, "output");
        QFETCH(QByteArray, errors);
        QVERIFY2(errors.isEmpty() ? end.errors.isEmpty() : end.errors.contains(errors), end.errors);
    }

    void aFolderThatIsGoneIsSaid()
    {
        CommandEnd end;
        run(u"/is not there"_s, u"true"_s, [&](const CommandEnd &ended) { end = ended; });
        QCOMPARE(end.error, ENOENT);
        QCOMPARE(end.errors, "Directory does not exists!");
    }

    // Both ways at once, more than a pipe holds; and no more is kept than is good.
    void outputIsDrainedWhileItComesAndKeptUpToALimit()
    {
        TestFolder folder;
        folder.write(u"talk"_s,
                     "head -c 3000000 /dev/zero >&2; head -c 3000000 /dev/zero; echo end\n");
        CommandEnd end;
        run(folder.path(), u"sh talk"_s, [&](const CommandEnd &ended) { end = ended; });
        QCOMPARE(end.output.size(), 3000004);
        QVERIFY(!end.outputIsCut);
        run(folder.path(), u"head -c 40000000 /dev/zero"_s,
            [&](const CommandEnd &ended) { end = ended; });
        QCOMPARE(end.output.size(), 16 << 20);
        QVERIFY(end.outputIsCut);
    }

    // Also what has left its group and session, and does not want to end.
    void allThatWasStartedEndsWhenAskedTo()
    {
        TestFolder folder;
        makeStubborn(folder);
        pid_t process = 0;
        bool ended = false;
        bool wasStillIts = false;
        std::thread asking;
        DesktopPrograms().runCommand(folder.path(), { u"sh"_s, u"parent"_s },
                                     { .started =
                                           [&](pid_t started) {
                                               process = started;
                                               asking = std::thread([&] {
                                                   if (waitForPid(folder) > 0) {
                                                       kill(process, SIGTERM);
                                                       kill(process, SIGTERM);
                                                   }
                                               });
                                           },
                                       .ended = [&](const CommandEnd &) { ended = true; },
                                       .gone = [&] { wasStillIts = lives(process); } });
        asking.join();
        QVERIFY(wasStillIts); // its number: who asks it to end meets no other
        QVERIFY(ended);
        QVERIFY(waitForPid(folder) > 0);
        QVERIFY(!lives(waitForPid(folder)));
    }

    // The command's own end is told at once, and what it left behind is still attended.
    void whatACommandLeavesBehindIsNotWaitedForButStillEnds()
    {
        TestFolder folder;
        folder.write(u"parent"_s, "sleep 1000 & echo $! > new; mv new pid; echo done\n");
        pid_t process = 0;
        QByteArray output;
        DesktopPrograms().runCommand(folder.path(), { u"sh"_s, u"parent"_s },
                                     { .started = [&](pid_t started) { process = started; },
                                       .ended =
                                           [&](const CommandEnd &end) {
                                               output = end.output;
                                               QVERIFY(lives(waitForPid(folder)));
                                               kill(process, SIGTERM);
                                           } });
        QCOMPARE(output, "done\n");
        QVERIFY(!lives(waitForPid(folder)));
    }

    void allEndsWhenTheProgramIsKilled()
    {
        TestFolder folder;
        makeStubborn(folder);
        const pid_t program = fork();
        if (program == 0) {
            DesktopPrograms().runCommand(folder.path(), { u"sh"_s, u"parent"_s }, {});
            _exit(0);
        }
        const pid_t left = waitForPid(folder);
        QVERIFY(lives(left));
        kill(program, SIGKILL);
        QCOMPARE(waitpid(program, nullptr, 0), program);
        QTRY_VERIFY(!lives(left));
    }

private:
    static void run(const QString &folder, const QString &line,
                    const std::function<void(const CommandEnd &)> &ended)
    {
        DesktopPrograms().runCommand(folder, line.split(u' '), { .ended = ended });
    }
    // "parent" starts a process in a session of its own; both take no SIGTERM.
    static void makeStubborn(const TestFolder &folder)
    {
        folder.write(u"parent"_s, "trap '' TERM\nsetsid sh child &\nwait\n");
        folder.write(u"child"_s, "trap '' TERM\necho $$ > new; mv new pid\nexec sleep 1000\n");
    }
    static pid_t waitForPid(const TestFolder &folder)
    {
        for (int i = 0; i < 2000; ++i) {
            if (const int pid = folder.read(u"pid"_s).trimmed().toInt())
                return pid;
            poll(nullptr, 0, 5); // on any thread; the next look comes soon
        }
        return 0;
    }
};

QTEST_GUILESS_MAIN(tst_CommandLines)
#include "tst_CommandLines.moc"
