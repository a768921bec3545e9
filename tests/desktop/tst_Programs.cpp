#include "files/Descriptor.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/SearchWindow.h"
#include "platform/desktop/SessionEnd.h"
#include "tests/support/TestFolder.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

class tst_Programs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endTellsHowTheProgramEnded()
    {
        const std::tuple<QString, int, QString> cases[] = {
            { u"true"_s, 0, u""_s },
            { u"echo no such file >&2; exit 3"_s, 3, u"no such file"_s },
            { u"kill -TERM $$"_s, 128 + SIGTERM, u""_s },
            { u"read line || exit 7"_s, 7, u""_s }, // the input is empty, not ours
            { u"echo chatter"_s, 0, u""_s },
        };
        for (const auto &[script, status, errorText] : cases) {
            for (const ProgramEnd &end : { runShell(script), runShellHere(script) }) {
                QVERIFY(end.started);
                QCOMPARE(end.status, status);
                QCOMPARE(end.errorText, errorText);
            }
        }
        const TestFolder folder;
        const Descriptor here(::open(FileName::toBytes(folder.path()), O_PATH));
        QVERIFY(DesktopPrograms().runAt(here.number(), { u"/bin/mkdir"_s, u"a"_s }).succeeded());
        QCOMPARE(folder.names(), QStringList { u"a"_s });
        QCOMPARE(DesktopPrograms().runAt(here.number(), { folder.path(u"none"_s) }).errorText,
                 u"No such file or directory"_s);

        // Far more than a pipe holds: a reader that stopped at its limit would hang the program.
        const ProgramEnd talkative = runShell(u"yes complaint | head -c 1000000 >&2; exit 5"_s);
        QCOMPARE(talkative.status, 5);
        QVERIFY(talkative.errorText.startsWith(u"complaint\n"));
        QVERIFY(talkative.errorText.size() <= 4096);

        const ProgramEnd missing = DesktopPrograms().run({ TestFolder().path(u"program"_s) },
                                                         [](pid_t) { QFAIL("called"); });
        QVERIFY(!missing.started && !missing.succeeded() && !missing.errorText.isEmpty());
    }

    void theFirstSearchProgramThatCanBeStartedIsTaken()
    {
        const TestFolder folder;
        folder.write(u"recoll"_s, "#!/is/not/there\n");
        folder.write(
            u"catfish"_s,
            "#!/bin/sh\nprintf '%s|' \"$@\" > \"$0.new\"; /bin/mv \"$0.new\" \"$0.told\"\n");
        for (const auto &name : { u"recoll"_s, u"catfish"_s })
            QVERIFY(chmod(folder.bytes(name), 0755) == 0);
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", FileName::toBytes(folder.path()));
        const bool shown = SearchWindow::show(u"-a b"_s);
        qputenv("PATH", before);
        QVERIFY(shown);
        QTRY_COMPARE(folder.read(u"catfish.told"_s),
                     "--path=" + FileName::toBytes(PathText::homeFolder()) + "|--start|--|-a b|");
    }

    void programRunsInAGroupOfItsOwnWithDefaultSignals()
    {
        pid_t group = 0;
        pid_t process = 0;
        const auto old = std::signal(SIGPIPE, SIG_IGN);
        const ProgramEnd end = runShell(u"kill -PIPE $$"_s, [&](pid_t started) {
            process = started;
            group = getpgid(started);
        });
        std::signal(SIGPIPE, old);
        QCOMPARE(group, process);
        QVERIFY(group != getpgrp());
        QCOMPARE(end.status, 128 + SIGPIPE);
    }

    void whatAProgramLeavesBehindIsNotWaitedFor()
    {
        const TestFolder folder;
        QVERIFY(runShell(u"sleep 60 & echo $! > '%1'"_s.arg(folder.path(u"left"_s))).succeeded());
        QCOMPARE(kill(folder.read(u"left"_s).trimmed().toInt(), SIGKILL), 0); // it still ran
    }

    // A shell's own children, too.
    void whatPacksEndsWhenToldToAndWithTheProgram()
    {
        const QString line = u"cd '%1' && /bin/sh -c 'echo $$ > me; echo; exec sleep 1000' && :"_s;
        for (const bool killed : { false, true }) {
            const TestFolder folder;
            pid_t attended = 0;
            const ProgramAttention attention { [&](pid_t process) { attended = process; },
                                               [&](const QByteArray &) {
                                                   kill(killed ? getpid() : attended,
                                                        killed ? SIGKILL : SIGTERM);
                                               } };
            const auto work = [&] {
                return DesktopPrograms().runShell(line.arg(folder.path()), attention).status;
            };
            if (!killed) {
                QCOMPARE(work(), 128 + SIGTERM);
            } else if (const pid_t program = fork(); program == 0) {
                work();
                _exit(0);
            } else {
                waitpid(program, nullptr, 0);
            }
            const pid_t sleeper = folder.read(u"me"_s).trimmed().toInt();
            QVERIFY(sleeper > 0);
            QTRY_VERIFY(kill(sleeper, 0) != 0);
        }
    }

    void whatCopiesEndsWithTheProgram()
    {
        const TestFolder folder;
        if (const pid_t program = fork(); program == 0) {
            runShellHere(u"exec sleep 1000"_s, [&](pid_t process) {
                folder.write(u"process"_s, QByteArray::number(process));
                kill(getpid(), SIGKILL);
            });
            _exit(0);
        } else {
            waitpid(program, nullptr, 0);
        }
        const pid_t sleeper = folder.read(u"process"_s).toInt();
        QVERIFY(sleeper > 0);
        QTRY_VERIFY(kill(sleeper, 0) != 0);
    }

    // A logout that is called off is not told of: whatever is announced next may be another end.
    void everyAnnouncedEndIsToldAnew()
    {
        SessionEnd end;
        int told = 0;
        connect(&end, &SessionEnd::willEnd, this, [&told] { ++told; });
        QVERIFY(QMetaObject::invokeMethod(&end, "prepareForShutdown", Q_ARG(bool, true)));
        QCOMPARE(told, 1);
        for (const int signal : { SIGTERM, SIGHUP, SIGINT }) {
            const int before = told;
            std::raise(signal);
            QTRY_COMPARE(told, before + 1);
        }
    }

    void theOutputOfAnAttendedProgramComesInLines()
    {
        QByteArrayList lines;
        const ProgramEnd end =
            DesktopPrograms().runShell(u"printf 'a\\n\\nb'; echo error >&2; exit 18"_s,
                                       { {}, [&](const QByteArray &line) { lines += line; } });
        QCOMPARE(lines, QByteArrayList({ "a", "", "b" }));
        QCOMPARE(end.errorText, u"error"_s);
        QCOMPARE(end.waitStatus(), 18 << 8);
    }

    void theSystemsTerminalStartsAndOtherProgramsAreFiles()
    {
        const TestFolder folder;
        folder.shell(u"mkdir -p data/applications Tool.app Setup.pkg Kit.AppDir plain"_s);
        for (const QString &name :
             { u"x-terminal-emulator"_s, u"program"_s, u"manager"_s, u"Kit.AppDir/AppRun"_s })
            folder.write(name, "#!/bin/sh\n: > \"$0.started\"\n");
        folder.shell(u"chmod 755 x-terminal-emulator program manager Kit.AppDir/AppRun"_s);
        const QByteArray entry = "[Desktop Entry]\nType=Application\nName=Manager\nExec=\""
            + folder.bytes(u"manager"_s) + "\" %f\nMimeType=inode/directory;\n";
        for (const QString &place : { u"data/applications/manager.desktop"_s, u"my.desktop"_s })
            folder.write(place, entry);
        folder.write(u"data/applications/mimeapps.list"_s,
                     "[Default Applications]\ninode/directory=manager.desktop\n");
        qputenv("XDG_DATA_DIRS", folder.bytes(u"data"_s));
        qputenv("PATH", FileName::toBytes(folder.path()));
        DesktopWorkspace workspace;
        const QString terminal = workspace.applicationForTool(Tool::Terminal);
        QCOMPARE(terminal, folder.path(u"x-terminal-emulator"_s));
        QVERIFY(workspace.openFile(terminal));
        QTRY_VERIFY(exists(terminal + u".started"_s));
        QVERIFY(!workspace.openFile(folder.path(u"program"_s)));
        QVERIFY(!workspace.launchApplication(folder.path(u"program"_s))); // nobody installed it
        QVERIFY(!exists(folder.path(u"program.started"_s)));
        QVERIFY(workspace.launchApplication(u"/usr/bin/true"_s));

        // A package is nothing that the program for folders opens.
        QVERIFY(!workspace.launchApplication(folder.path(u"Tool.app"_s)));
        QVERIFY(!workspace.openFile(folder.path(u"Tool.app"_s)));
        QVERIFY(!workspace.openInstallerPackage(folder.path(u"Setup.pkg"_s)));
        // An entry from elsewhere is a file, for which there is no program here.
        const QString installed = folder.path(u"data/applications/manager.desktop"_s);
        QVERIFY(workspace.isInstalledApplication(installed));
        QVERIFY(!workspace.isInstalledApplication(folder.path(u"my.desktop"_s)));
        QVERIFY(!workspace.launchApplication(folder.path(u"my.desktop"_s)));
        QVERIFY(!exists(folder.path(u"manager.started"_s)));
        QVERIFY(workspace.openFile(folder.path(u"plain"_s)));
        QTRY_VERIFY(exists(folder.path(u"manager.started"_s)));
        QCOMPARE(workspace.foreignProgram(folder.path(u"Kit.AppDir"_s)),
                 folder.path(u"Kit.AppDir/AppRun"_s));
        QCOMPARE(workspace.foreignProgram(installed), QString());
    }

private:
    using Started = std::function<void(pid_t)>;
    static ProgramEnd runShell(const QString &script, const Started &started = {})
    {
        return DesktopPrograms().run({ u"/bin/sh"_s, u"-c"_s, script }, started);
    }
    static ProgramEnd runShellHere(const QString &script, const Started &started = {})
    {
        const Descriptor here(::open(".", O_PATH));
        return DesktopPrograms().runAt(here.number(), { u"/bin/sh"_s, u"-c"_s, script }, started);
    }
};

QTEST_MAIN(tst_Programs)
#include "tst_Programs.moc"
