#include "tests/operations/OperationWorld.h"

#include "files/FileSystem.h"
#include "files/FolderMark.h"
#include "tests/support/AsOnFat.h"
#include "tests/support/InterruptedRuns.h"
#include "tests/support/Ledger.h"
#include "tests/support/Watched.h"

#include <climits>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

// A copy or move of an item: a folder with "x" in it, or a file.
struct Work {
    Operation operation;
    QString inside;
    Device device;
    QString name = u"a"_s;

    QString file() const { return name + inside; }

    QByteArray at(int step) const
    {
        return QByteArray(operation == Operation::Copy ? "copy" : "move")
            + (inside.isEmpty() ? " of a file" : " of a folder")
            + (device == Device::Other ? " across" : "") + ", step " + QByteArray::number(step);
    }
};

QList<Work> everyWork()
{
    QList<Work> all;
    for (const auto operation : { Operation::Copy, Operation::Move })
        for (const QString &inside : { QString(), u"/x"_s })
            for (const auto device : { Device::Same, Device::Other })
                all.append({ operation, inside, device });
    return all;
}

} // namespace

// The program or the copy command is killed in the middle of its work. At that moment the name
// holds the whole old item or the whole new one; after the next start nothing is hidden or lost,
// and the person knows.
class tst_Killed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void atEachStep()
    {
        for (const Work &work : everyWork()) {
            killAtEachStep(work, false, false);
            killAtEachStep(work, true, false);
            Work longest = work; // too long for the names of what is set aside
            longest.name = QString(NAME_MAX, u'n');
            killAtEachStep(longest, true, true);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void whileItsCommandRuns()
    {
        for (const auto device : { Device::Same, Device::Other }) {
            World world(u"from/a/x=new, from/a/y=y, to/a/x=old"_s, device);
            world.programs.onStart = [](pid_t) { killSelf(); };
            answerYes(world);
            QVERIFY(diesOf([&] { world.runHere(Operation::Copy, { u"a"_s }); }));
            QCOMPARE(world.to(u"a/x"_s), "old");
            QStringList told;
            QTRY_VERIFY(isSettled(world, told));
            QCOMPARE(world.tree(), u"from/a/x=new, from/a/y=y, to/a/x=old"_s);
        }
    }

    void whileAProgramMakesAnItem()
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

    // Numbers that are equal by chance, on two devices or after a while, prove no exchange.
    void whatWasNeverMovedStays()
    {
        for (const auto device : { Device::Other, Device::Same }) {
            World world(u"from/a=only, to/a=old"_s, device);
            const auto number = [&](const QString &path) {
                return QString::number(
                    fileStatus(world.folder.path(path), Links::NoFollow)->identity.inode);
            };
            const Descriptor to(open(FileName::toBytes(world.destination), O_RDONLY | O_CLOEXEC));
            world.engine.journal().write({ world.destination, folderMark(to.number()),
                                           u".twinleaf-gone"_s, u"moved"_s, world.source, u"a"_s,
                                           number(u"to/a"_s), number(u"from/a"_s) + u" 1"_s });
            QStringList told;
            QTRY_VERIFY(isSettled(world, told));
            QCOMPARE(world.tree(), u"from/a=only, to/a=old"_s);
        }
    }

    // Another volume at the same mount point is not the one that the note is about.
    void aNoteWaitsForItsVolume()
    {
        const QString given = u"from/a/x=new, to/a/x=old"_s;
        World world(given);
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
        world.folder.shell(u"mv to volume; mkdir to"_s);
        QStringList told;
        QVERIFY(!isSettled(world, told));
        QVERIFY(told.isEmpty());
        world.folder.shell(u"rmdir to; mv volume to"_s);
        QTRY_VERIFY(isSettled(world, told));
        const QString removed = u"An unfinished copy of '%1' was removed."_s;
        QCOMPARE(told, QStringList { removed.arg(world.destination + u"/a"_s) });
        QCOMPARE(world.tree(), given);

        // FAT, put in again, has other inode numbers.
        die();
        world.folder.shell(u"mv to volume; cp -a volume to; rm -r volume"_s);
        QVERIFY(!isSettled(world, told));
        onFat = true;
        QTRY_VERIFY(isSettled(world, told));
        onFat = false;
        QCOMPARE(world.tree(), given);
    }

    // With the power goes what was written and not flushed; names and removals have got through.
    void aPowerCutLeavesOldOrNewWhole()
    {
        for (const Work &work : everyWork())
            for (int step = 1; powerIsCut(work, step) && !QTest::currentTestFailed(); ++step) { }
    }

private:
    // `plain`: on a file system without exchange.
    static void killAtEachStep(const Work &work, bool replaces, bool plain)
    {
        bool killed = true;
        int step = 1;
        for (; killed; ++step) {
            World world(u"from/%1=new"_s.arg(work.file()), work.device);
            if (replaces)
                makeTree(world.folder, u"to/%1=old"_s.arg(work.file()));
            answerYes(world);
            killed = diesOf([&] {
                int calls = 0;
                const Watched watched([&](Call call, const char *, unsigned flags) {
                    if (++calls == step)
                        killSelf();
                    return plain ? answerOfPlainFileSystem(call, flags) : 0;
                });
                world.runHere(work.operation, { work.name });
            });
            const QByteArray when =
                work.at(step) + (replaces ? ", replacing" : "") + (plain ? ", as on FAT" : "");
            const auto stands = [&] { return exists(world.folder.path(u"to/"_s + work.name)); };
            const auto isWhole = [&] {
                const QByteArray now = world.to(work.file());
                return now == "new" || (replaces ? now == "old" : !stands());
            };
            // Without an exchange the old item is away for a moment.
            QVERIFY2(isWhole() || (plain && !stands()), when);
            QStringList told;
            const bool leaves = world.leftovers() > 0;
            QTRY_VERIFY2(isSettled(world, told), when);
            QVERIFY2(isWhole(), when);
            const auto found = world.contents();
            QVERIFY2(found.contains("new"), when);
            const bool arrived = world.to(work.file()) == "new";
            QVERIFY2(!replaces || found.contains("old") || arrived, when);
            QVERIFY2(world.from(work.file()) != "old", when); // but in the Trash
            const bool saysArrived = told.join(u' ').contains(u"was copied but is still there"_s);
            QVERIFY2(!saysArrived || arrived, when);
            // An empty hidden folder is nothing to tell of.
            if (!leaves && work.operation == Operation::Copy)
                QCOMPARE(told, QStringList());
            const QString source =
                work.operation == Operation::Copy ? u"from/%1=new, "_s.arg(work.file()) : QString();
            if (!killed)
                QCOMPARE(world.tree(), source + u"to/%1=new"_s.arg(work.file()));
        }
        QVERIFY(step > 5);
    }

    // Whether the work had not ended before.
    static bool powerIsCut(const Work &work, int step)
    {
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
        World world(u"from/%1=new, to/%1=old"_s.arg(work.file()), work.device);
        answerYes(world);
        const QStringList data { world.folder.path(), world.far.path() };
        const QStringList notes { Journal::stateFolder() };
        FileSystem::makePrivateFolders(notes.first());
        Ledger flushed;
        const auto flush = [&](const QStringList &folders) {
            for (const QByteArray &file : everyFile(folders).keys())
                flushed.note(Ledger::Written, file);
        };
        flush(data + notes);
        const bool killed = diesOf([&] {
            int calls = 0;
            QStringList covered;
            const Watched watched([&](Call call, const char *, unsigned) {
                flush(covered);
                covered = call == Call::SyncAll ? data
                    : call == Call::SyncFile    ? notes
                                                : QStringList();
                if (++calls == step)
                    killSelf();
                return 0;
            });
            world.runHere(work.operation, { work.name });
        });
        QHash<QByteArray, off_t> kept; // bytes, by inode number
        for (const auto &[kind, file] : flushed.entries())
            kept[file.split(' ')[0]] = off_t(file.split(' ')[1].toLongLong());
        const auto check = [&] {
            if (killed)
                for (const auto &[file, path] : everyFile(data + notes).asKeyValueRange())
                    QCOMPARE(truncate(path, kept.value(file.split(' ')[0])), 0);
            QStringList told;
            QTRY_VERIFY2(isSettled(world, told), work.at(step));
            const auto found = world.contents();
            QVERIFY2(found.contains("new"), work.at(step));
            QVERIFY2(found.contains("old") || world.to(work.file()) == "new", work.at(step));
        };
        check();
        return killed;
    }
};

QTEST_GUILESS_MAIN(tst_Killed)
#include "tst_Killed.moc"
