#include "files/FileStatus.h"
#include "files/ItemMarks.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/HelperWords.h"
#include "rights/SeenItem.h"
#include "tests/support/TestTree.h"

#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int Done = int(Status::Done);
constexpr int Failed = int(Status::Failed);
constexpr int Refused = int(Status::Refused);

const auto Chown = u"/usr/sbin/chown"_s;
const auto Chattr = u"/usr/bin/chattr"_s;

bool isRoot()
{
    return geteuid() == 0;
}

} // namespace

// The program itself, run by root, and by anybody else, to whom the system refuses most.
class tst_RightsHelper : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsNoneOfTheThreeIsRefused_data()
    {
        QTest::addColumn<QStringList>("words");
        const auto add = [](const char *name, const QString &words) {
            QTest::newRow(name) << words.split(u'|', Qt::KeepEmptyParts);
        };
        int row = 0;
        add("nothing", u""_s);
        add("another command", u"rm|/x|1:1"_s);
        add("few", u"chown|root:root|/x"_s);
        add("more", u"chown|root:root|/x|1:1|/y"_s);
        add("an option", u"chown|-R|root:root|/x|1:1"_s);
        for (const char *path :
             { "",      "/",     "//",    "x",       "./x",    "~",     "/x/",   "//x",
               "/x//y", "/.",    "/..",   "/x/../y", "/x/./y", "/x/..", "/x%00", "/x%",
               "/x%2",  "/x%zz", "/x%-1", "/x\ny",   "/\xFF",  "-R" }) {
            QTest::addRow("path %d", row++)
                << QStringList { u"chown"_s, u"root:root"_s, FileName::fromBytes(path), u"1:1"_s };
        }
        add("long name", u"chown|root:root|/%1|1:1"_s.arg(QString(256, u'n')));
        add("long path", u"chown|root:root|%1|1:1"_s.arg(u"/n"_s.repeated(2048)));
        for (const char *owners :
             { "", ":", "root", "root:", ":root", "twinleaf-nobody:root", "root:twinleaf-nobody",
               "-1:-1", "4294967295:0", "0:4294967295", "0x0:0", " 0:0", "root:root:root", "+:0",
               "+root:0", "0:+-1", "+4294967295:0", "++0:0" })
            QTest::addRow("owners %d", row++)
                << QStringList { u"chown"_s, QString::fromLatin1(owners), u"/x"_s, u"1:1"_s };
        for (const char *identity :
             { "", "1", "1:", ":1", "-1:1", "1:1:1", "99999999999999999999:1" })
            QTest::addRow("identity %d", row++)
                << QStringList { u"chown"_s, u"root:root"_s, u"/x"_s,
                                 QString::fromLatin1(identity) };
        for (const char *flag : { "", "i", "+a", "+ia", "+i+i" })
            QTest::addRow("flag %d", row++)
                << QStringList { u"immutable"_s, QString::fromLatin1(flag), u"/x"_s, u"1:1"_s };
        for (const char *process : { "", "0", "1", "-1", "-9", "1x", " 2", "0x2", "4294967298" })
            QTest::addRow("process %d", row++)
                << QStringList { u"kill"_s, QString::fromLatin1(process), u"9"_s };
        for (const char *start : { "", "-1", "x", "99999999999999999999" })
            QTest::addRow("start %d", row++)
                << QStringList { u"kill"_s, u"2"_s, QString::fromLatin1(start) };
        add("a signal", u"kill|-9|2|9"_s);
        add("any start", u"kill|2"_s);
    }
    void whatIsNoneOfTheThreeIsRefused()
    {
        QFETCH(QStringList, words);
        const ProgramEnd end = run(words);
        QCOMPARE(end.status, Refused);
        QVERIFY2(!end.errorText.contains(u'\n'), "a line of somebody else's in the log");
    }

    void onlyTheItemThatWasSeenIsHeld()
    {
        makeTree(folder, u"real/file, real/other, link->real, file->real/file"_s);
        QCOMPARE(mkfifo(folder.bytes(u"fifo"_s), 0600), 0);
        const QString file = folder.path(u"real/file"_s);
        const std::tuple<const char *, QString, QString, std::optional<Status>> cases[] = {
            { "as it was", file, file, {} },
            { "a folder", folder.path(u"real"_s), folder.path(u"real"_s), {} },
            { "a link itself", folder.path(u"file"_s), folder.path(u"file"_s), {} },
            { "a pipe, not opened", folder.path(u"fifo"_s), folder.path(u"fifo"_s), {} },
            { "another came", folder.path(u"real/other"_s), file, Status::Refused },
            { "a link came", folder.path(u"file"_s), file, Status::Refused },
            { "a link came on the way", folder.path(u"link/file"_s), file, Status::Failed },
            { "through a file", file + u"/x"_s, file, Status::Failed },
            { "gone", folder.path(u"none"_s), file, Status::Failed },
            { "by a descriptor", u"/proc/self/cwd"_s, u"/proc/self/cwd"_s, Status::Failed },
            { "a process", u"/proc/%1/stat"_s.arg(getpid()), u"/proc/%1/stat"_s.arg(getpid()),
              Status::Refused },
            { "the kernel's", u"/sys/kernel"_s, u"/sys/kernel"_s, Status::Refused },
            { "a device", u"/dev/null"_s, u"/dev/null"_s, Status::Refused },
        };
        for (const auto &[name, path, seen, refusal] : cases) {
            const auto status = fileStatus(seen, Links::NoFollow);
            QVERIFY(status);
            const auto held = takeItem({ FileName::toBytes(path).toStdString(),
                                         status->identity.device, status->identity.inode });
            const auto *outcome = std::get_if<Outcome>(&held);
            QVERIFY2(bool(outcome) == bool(refusal), name);
            if (outcome)
                QVERIFY2(outcome->status == refusal, name);
        }
    }

    // A file's folder changes places with a link to another one, over and over.
    void swappedFoldersLeadNowhereElse()
    {
        makeTree(folder, u"swap/way/file, swap/victim/file, swap/link->victim"_s);
        const QString file = folder.path(u"swap/way/file"_s);
        const auto victim = fileStatus(folder.path(u"swap/victim/file"_s), Links::NoFollow);
        const auto item = fileStatus(file, Links::NoFollow);
        QProcess swapping;
        swapping.setWorkingDirectory(folder.path(u"swap"_s));
        swapping.start(
            u"/usr/bin/python3"_s,
            { u"-c"_s,
              u"import ctypes, os\nc = ctypes.CDLL(None)\nparent = os.getppid()\n"
              "print(flush=True)\n"
              "while os.getppid() == parent: c.renameat2(-100, b'way', -100, b'link', 2)"_s });
        QVERIFY(swapping.waitForReadyRead());
        const QString owners = isRoot() ? u"daemon:daemon"_s : ownersOf(*item);
        for (int i = 0; i < 100; ++i)
            ask(Chown, { owners, file }, item->identity);
        swapping.kill();
        swapping.waitForFinished();
        QCOMPARE(fileStatus(folder.path(u"swap/victim/file"_s), Links::NoFollow)->changed,
                 victim->changed);
    }

    void ownerChangesAndSetIdStays()
    {
        const QString name = FileName::fromBytes("-a b%\n\xFF");
        folder.write(name);
        QCOMPARE(chmod(folder.bytes(name), 06755), 0);
        const auto before = fileStatus(folder.path(name), Links::NoFollow);
        const auto change = [&](const QString &owners) {
            return ask(Chown, { owners, folder.path(name) }, before->identity).status;
        };
        QCOMPARE(change(ownersOf(*before)), Done); // takes the bits, too
        QCOMPARE(modeOf(name), mode_t(06755));
        QCOMPARE(change(u"54321:54321"_s), isRoot() ? Done : Failed);
        QCOMPARE(modeOf(name), mode_t(06755));
        QCOMPARE(fileStatus(folder.path(name), Links::NoFollow)->owner,
                 isRoot() ? uid_t(54321) : geteuid());
        // What somebody else wrote does not become a program of the system's.
        for (const QString &owners : { u"root:54321"_s, u"54321:root"_s, u"daemon:54321"_s,
                                       u"54321:daemon"_s, u"999:54321"_s })
            QCOMPARE(change(owners), Refused);
        if (!isRoot())
            return;
        QCOMPARE(change(u"1000:+1000"_s), Done);
        QCOMPARE(modeOf(name), mode_t(06755));
        QCOMPARE(chmod(folder.bytes(name), 01755), 0);
        QCOMPARE(change(u"root:root"_s), Done);
        QCOMPARE(modeOf(name), mode_t(01755));
    }

    void immutableFlagComesAndGoes()
    {
        makeTree(folder, u"plain, folder/, linked->plain"_s);
        QCOMPARE(mkfifo(folder.bytes(u"pipe"_s), 0600), 0);
        for (const QString &name : { u"plain"_s, u"folder"_s }) {
            const Descriptor item(open(folder.bytes(name), O_PATH | O_CLOEXEC));
            const bool can = isRoot() && ItemMarks::lockOf(item.number()).canBeImmutable;
            for (const auto &[flag, immutable] :
                 { std::pair(u"+i"_s, true), { u"+i"_s, true }, { u"-i"_s, false } }) {
                const int status = mark(flag, name).status;
                QCOMPARE(status, can ? Done : status == Done && !immutable ? Done : Failed);
                QCOMPARE(fileStatus(folder.path(name), Links::NoFollow)->immutable,
                         can && immutable);
            }
        }
        for (const QString &name : { u"pipe"_s, u"linked"_s })
            QCOMPARE(mark(u"+i"_s, name).status, Refused);
    }

    void processEndsWhenToldTo()
    {
        QProcess process;
        process.start(u"/bin/sleep"_s, { u"1000"_s });
        QVERIFY(process.waitForStarted());
        const QString id = QString::number(process.processId());
        const auto start = startOfProcess(pid_t(process.processId()));
        QVERIFY(start);
        QCOMPARE(ask(u"/bin/kill"_s, { id }, ProcessStart { start->ticks + 1 }).status, Refused);
        QCOMPARE(process.state(), QProcess::Running);
        QCOMPARE(ask(u"/bin/kill"_s, { id }, *start).status, Done);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), SIGTERM); // of a crash it is the signal
        QCOMPARE(ask(u"/bin/kill"_s, { id }, *start).status, Failed);
    }

    void theLogSaysWhoAskedForWhat_data()
    {
        QTest::addColumn<QByteArray>("uid");
        QTest::addColumn<QString>("who");
        QTest::newRow("by pkexec")
            << QByteArray("1000") << u"uid 1000 asked for: kill 1 9: no process"_s;
        QTest::newRow("nobody") << QByteArray() << u"unknown asked for: kill 1 9: no process"_s;
        QTest::newRow("forged") << QByteArray("0\nsu: ok")
                                << u"unknown asked for: kill 1 9: no process"_s;
    }
    void theLogSaysWhoAskedForWhat()
    {
        QFETCH(QByteArray, uid);
        QFETCH(QString, who);
        qputenv("PKEXEC_UID", uid);
        const ProgramEnd end = run({ u"kill"_s, u"1"_s, u"9"_s });
        qunsetenv("PKEXEC_UID");
        QVERIFY2(end.errorText.endsWith(who), qPrintable(end.errorText));
    }

    // Nobody need have started it as programs are started.
    void oddStartsAreSurvived()
    {
        folder.write(u"start.py"_s,
                     "import ctypes, os, sys\n"
                     "os.closerange(0, 3)\n"
                     "arguments = (ctypes.c_char_p * 1)(None)\n"
                     "ctypes.CDLL(None).execv(sys.argv[1].encode(), arguments)\n");
        const ProgramEnd end =
            DesktopPrograms().run({ u"/usr/bin/python3"_s, folder.path(u"start.py"_s), _program });
        QCOMPARE(end.status, Refused);
    }

private:
    ProgramEnd run(const QStringList &words) const
    {
        return DesktopPrograms().run(QStringList { _program } + words);
    }
    // As the main program asks.
    ProgramEnd ask(const QString &command, const QStringList &arguments,
                   const CommandSubject &subject) const
    {
        return run(helperWords(command, arguments, subject).value_or(QStringList()));
    }
    ProgramEnd mark(const QString &flag, const QString &name) const
    {
        const auto status = fileStatus(folder.path(name), Links::NoFollow);
        return ask(Chattr, { flag, folder.path(name) }, status->identity);
    }
    static QString ownersOf(const FileStatus &status)
    {
        return u"%1:%2"_s.arg(status.owner).arg(status.group);
    }
    mode_t modeOf(const QString &name) const
    {
        return fileStatus(folder.path(name), Links::NoFollow)->mode;
    }

    const QString _program = QStringLiteral(TWINLEAF_RIGHTS_HELPER);
    const TestFolder folder;
};

QTEST_GUILESS_MAIN(tst_RightsHelper)
#include "tst_RightsHelper.moc"
