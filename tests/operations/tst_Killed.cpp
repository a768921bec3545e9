#include "tests/operations/OperationWorld.h"

#include "files/FileSystem.h"
#include "operations/InterruptedRuns.h"
#include "tests/support/KilledAtCall.h"
#include "tests/support/Ledger.h"
#include "tests/support/Watched.h"

#include <QTest>

#include <csignal>
#include <linux/magic.h>
#include <map>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <sys/wait.h>
#include <unistd.h>

static bool onFat = false; // as far as anybody asks

int fstatfs(int file, struct statfs *status) noexcept
{
    const int answer = int(syscall(SYS_fstatfs, file, status));
    if (onFat)
        status->f_type = MSDOS_SUPER_MAGIC;
    return answer;
}

// The program or the copy command is killed in the middle of its work. At that moment the name
// holds the whole old item or the whole new one; after the next start nothing is hidden or lost,
// and the person knows.
class tst_Killed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void atEachStep_data();
    void atEachStep();
    void atAnyMomentOfATree_data();
    void atAnyMomentOfATree();
    void theCommand();
    void whileAProgramMakesAnItem();
    void aNoteWaitsForItsVolume();
    void aPowerCutLeavesOldOrNewWhole_data();
    void aPowerCutLeavesOldOrNewWhole();
};

namespace {

void killSelf()
{
    kill(getpid(), SIGKILL);
}

// Does the work in a process of its own; whether it was killed.
bool diesOf(const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status);
}

void answerYes(World &world)
{
    world.alerts.decide = [](const Alert &alert) {
        return alert.buttons.size() > 1 ? Alert::Yes : Alert::Ok;
    };
}

// A command on its way into life holds the note for a moment longer than the program.
bool isSettled(World &world, QStringList &told)
{
    told += settleInterruptedRuns(world.engine.journal(), world.workspace);
    return world.leftovers() == 0 && world.engine.journal().abandoned().isEmpty();
}

} // namespace

void tst_Killed::atEachStep_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("folder");
    QTest::addColumn<bool>("replaces");
    QTest::addColumn<Device>("device");
    QTest::addColumn<bool>("plain"); // a file system without exchange
    for (const auto operation : { Operation::Copy, Operation::Move }) {
        for (const bool folder : { false, true }) {
            for (const bool replaces : { false, true }) {
                for (const auto device : { Device::Same, Device::Other }) {
                    for (int plain = 0; plain <= int(replaces); ++plain)
                        QTest::addRow(
                            "%s of a %s%s%s%s", operation == Operation::Copy ? "copy" : "move",
                            folder ? "folder" : "file", replaces ? ", replacing" : "",
                            device == Device::Other ? ", across" : "", plain ? ", as on FAT" : "")
                            << operation << folder << replaces << device << bool(plain);
                }
            }
        }
    }
}

void tst_Killed::atEachStep()
{
    QFETCH(Operation, operation);
    QFETCH(bool, folder);
    QFETCH(bool, replaces);
    QFETCH(Device, device);
    QFETCH(bool, plain);
    const QString inside = folder ? u"/x"_s : QString();
    bool killed = true;
    int step = 1;
    for (; killed; ++step) {
        World world(u"from/a%1=new"_s.arg(inside), device);
        if (replaces)
            makeTree(world.folder, u"to/a%1=old"_s.arg(inside));
        answerYes(world);
        killed = diesOf([&] {
            int calls = 0;
            const Watched watched([&](Call call, const char *, unsigned flags) {
                if (++calls == step)
                    killSelf();
                return plain ? answerOfPlainFileSystem(call, flags) : 0;
            });
            world.runHere(operation, { u"a"_s });
        });
        const auto check = [&](const char *when) {
            const QByteArray now = world.to(u"a"_s + inside);
            const bool stands = exists(world.folder.path(u"to/a"_s));
            const bool isWhole = now == "new" || (replaces ? now == "old" : !stands);
            const auto found = world.contents();
            const QByteArray told = QByteArray(when) + " of step " + QByteArray::number(step);
            // Without an exchange the old item is away for a moment.
            QVERIFY2(isWhole || (plain && !stands && qstrcmp(when, "at the kill") == 0), told);
            if (qstrcmp(when, "at the kill") == 0)
                return;
            QVERIFY2(found.contains("new"), told);
            QVERIFY2(!replaces || found.contains("old") || now == "new", told);
        };
        check("at the kill");
        QStringList told;
        const bool leaves = world.leftovers() > 0;
        QTRY_VERIFY(isSettled(world, told));
        check("after the start");
        if (QTest::currentTestFailed())
            return;
        // An empty hidden folder is nothing to tell of.
        if (!leaves && operation == Operation::Copy)
            QCOMPARE(told, QStringList());
        if (!killed)
            QCOMPARE(
                world.tree(),
                (operation == Operation::Copy ? u"from/a%1=new, to/a%1=new"_s : u"to/a%1=new"_s)
                    .arg(inside));
    }
    QVERIFY(step > 5);
}

void tst_Killed::atAnyMomentOfATree_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<Device>("device");
    for (int percent = 2; percent < 100; percent += 8) {
        QTest::addRow("after %d %% of its way", percent) << percent << Device::Same;
        QTest::addRow("after %d %% of its way, across", percent) << percent << Device::Other;
    }
}

void tst_Killed::atAnyMomentOfATree()
{
    QFETCH(int, percent);
    QFETCH(Device, device);
    const QString given = u"from/a/x=new, to/a/x=old"_s;
    QSet<QByteArray> replacement { "new" };
    const auto move = [&](World &world, int last) {
        for (int number = 0; number < 100; ++number) {
            replacement += QByteArray::number(number);
            world.folder.write(u"from/a/"_s + QString::number(number), QByteArray::number(number));
            world.folder.write(u"to/a/"_s + QString::number(number), "old");
        }
        answerYes(world);
        return callsUntilKilled([&] { world.runHere(Operation::Move, { u"a"_s }); }, last);
    };
    static std::map<Device, int> all; // calls to the kernel
    if (!all.contains(device)) {
        World whole(given, device);
        all[device] = move(whole, 0);
    }
    World world(given, device);
    move(world, all[device] * percent / 100);
    const QByteArray x = world.to(u"a/x"_s);
    QVERIFY(x == "new" || x == "old");
    QStringList told;
    QTRY_VERIFY(isSettled(world, told));
    QVERIFY(world.contents().contains(replacement));
}

void tst_Killed::theCommand()
{
    World world(u"from/a/x=new, to/a/x=old"_s);
    world.programs.onStart = [](pid_t process) { kill(process, SIGKILL); };
    bool failed = false;
    world.alerts.decide = [&](const Alert &alert) {
        failed = alert.buttons.size() == 1;
        return failed ? Alert::Ok : Alert::Yes;
    };
    world.run(Operation::Copy, { u"a"_s });
    // A quick command ends before it is killed.
    QCOMPARE(world.tree(), failed ? u"from/a/x=new, to/a/x=old"_s : u"from/a/x=new, to/a/x=new"_s);
}

void tst_Killed::whileAProgramMakesAnItem()
{
    World world(u"to/a.zip=old"_s);
    QVERIFY(diesOf([&] {
        Transfer transfer(Operation::Copy, world.source, world.destination, world.programs,
                          world.workspace, world.engine.journal(), {});
        transfer.make(u"a.zip"_s, [&](const QString &path) {
            for (const QString &name : { u"/a.zip"_s, u"/half written"_s })
                std::ofstream(FileName::toBytes(PathText::parent(path) + name)) << "new";
            killSelf();
        });
    }));
    QCOMPARE(world.leftovers(), 1);
    QStringList told;
    QTRY_VERIFY(isSettled(world, told));
    QCOMPARE(world.tree(), u"to/a.zip=old"_s);
    QCOMPARE(told.size(), 1);
}

// Another volume at the same mount point is not the one that the note is about.
void tst_Killed::aNoteWaitsForItsVolume()
{
    World world(u"from/a/x=new, to/a/x=old"_s);
    world.programs.before = [](const QStringList &arguments) -> std::optional<int> {
        DesktopPrograms().run(arguments);
        killSelf();
        return 1;
    };
    answerYes(world);
    const auto die = [&] {
        QVERIFY(diesOf([&] { world.runHere(Operation::Copy, { u"a"_s }); }));
        QCOMPARE(world.leftovers(), 1);
    };
    die();
    const auto rename = [&](const QString &from, const QString &to) {
        std::filesystem::rename(FileName::toBytes(world.folder.path(from)).toStdString(),
                                FileName::toBytes(world.folder.path(to)).toStdString());
    };
    rename(u"to"_s, u"volume"_s);
    world.folder.makeFolder(u"to"_s);
    QStringList told;
    QVERIFY(!isSettled(world, told));
    QVERIFY(told.isEmpty());
    std::filesystem::remove(FileName::toBytes(world.destination).toStdString());
    rename(u"volume"_s, u"to"_s);
    QTRY_VERIFY(isSettled(world, told));
    QCOMPARE(told,
             QStringList {
                 u"An unfinished copy of '%1' was removed."_s.arg(world.destination + u"/a"_s) });
    QCOMPARE(world.tree(), u"from/a/x=new, to/a/x=old"_s);

    // FAT, put in again, has other inode numbers.
    die();
    world.folder.shell(u"mv to volume; cp -a volume to; rm -r volume"_s);
    QVERIFY(!isSettled(world, told));
    onFat = true;
    QTRY_VERIFY(isSettled(world, told));
    onFat = false;
    QCOMPARE(world.tree(), u"from/a/x=new, to/a/x=old"_s);
}

void tst_Killed::aPowerCutLeavesOldOrNewWhole_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("inside");
    QTest::addColumn<Device>("device");
    for (const auto operation : { Operation::Copy, Operation::Move })
        for (const QString &inside : { QString(), u"/x"_s })
            for (const auto device : { Device::Same, Device::Other })
                QTest::addRow("%s of a %s%s", operation == Operation::Copy ? "copy" : "move",
                              inside.isEmpty() ? "file" : "folder",
                              device == Device::Other ? ", across" : "")
                    << operation << inside << device;
}

// With the power goes what was written and not flushed; names and removals have got through.
void tst_Killed::aPowerCutLeavesOldOrNewWhole()
{
    QFETCH(Operation, operation);
    QFETCH(QString, inside);
    QFETCH(Device, device);
    const auto everyFile = [](const QStringList &folders) {
        QHash<QByteArray, QByteArray> files; // paths by inode number and size
        for (const QString &folder : folders)
            for (const auto &entry : std::filesystem::recursive_directory_iterator(
                     FileName::toBytes(folder).toStdString())) {
                struct stat status { };
                if (lstat(entry.path().c_str(), &status) == 0 && S_ISREG(status.st_mode))
                    files.insert(QByteArray::number(quint64(status.st_ino)) + ' '
                                     + QByteArray::number(qint64(status.st_size)),
                                 entry.path().c_str());
            }
        return files;
    };
    bool killed = true;
    for (int step = 1; killed; ++step) {
        World world(u"from/a%1=new, to/a%1=old"_s.arg(inside), device);
        answerYes(world);
        const QStringList data { world.folder.path(), world.far.path() };
        const QStringList notes { Journal::stateFolder() };
        FileSystem::makePrivateFolders(notes.first());
        Ledger flushed;
        for (const QByteArray &file : everyFile(data + notes).keys())
            flushed.note(Ledger::Written, file);
        killed = diesOf([&] {
            int calls = 0;
            QStringList covered;
            const Watched watched([&](Call call, const char *, unsigned) {
                for (const QByteArray &file : everyFile(covered).keys())
                    flushed.note(Ledger::Written, file);
                covered = call == Call::SyncAll ? data
                    : call == Call::SyncFile    ? notes
                                                : QStringList();
                if (++calls == step)
                    killSelf();
                return 0;
            });
            world.runHere(operation, { u"a"_s });
        });
        QHash<QByteArray, off_t> kept; // bytes, by inode number
        for (const auto &[kind, file] : flushed.entries())
            kept[file.split(' ')[0]] = off_t(file.split(' ')[1].toLongLong());
        if (killed)
            for (const auto &[file, path] : everyFile(data + notes).asKeyValueRange())
                QCOMPARE(truncate(path, kept.value(file.split(' ')[0])), 0);
        QStringList told;
        QTRY_VERIFY(isSettled(world, told));
        const auto found = world.contents();
        const QByteArray at = "step " + QByteArray::number(step);
        QVERIFY2(found.contains("new"), at);
        QVERIFY2(found.contains("old") || world.to(u"a"_s + inside) == "new", at);
    }
}

QTEST_GUILESS_MAIN(tst_Killed)
#include "tst_Killed.moc"
