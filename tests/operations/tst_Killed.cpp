#include "tests/operations/OperationWorld.h"
#include "tests/support/KilledAtCall.h"

#include "operations/SetAside.h"

#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

// The program or the copy command is killed in the middle of a replacement; after the next start
// both the old and the new item are there, under names that can be seen.
class tst_Killed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theProgramAtAStep_data();
    void theProgramAtAStep();
    void theProgramAtAnyMoment_data();
    void theProgramAtAnyMoment();
    void theCommand();
    void anItemOfAnUnmountedVolumeIsBroughtBackLater();
};

namespace {

void killSelf()
{
    kill(getpid(), SIGKILL);
}

void replace(World &world, Operation operation)
{
    world.alerts.decide = [](const Alert &alert) {
        return alert.buttons.size() > 1 ? Alert::Yes : Alert::Ok;
    };
    world.runHere(operation, { u"a"_s });
}

// Runs the replacement in a process of its own, which dies on the way.
void runAndDie(World &world, Operation operation)
{
    const pid_t child = fork();
    if (child == 0) {
        replace(world, operation);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    QVERIFY2(WIFSIGNALED(status), "came to its end");
}

// What is replaced, and what replaces it.
QSet<QByteArray> makeLargeFolders(const World &world)
{
    QSet<QByteArray> replacement { "new" };
    for (int number = 0; number < 200; ++number) {
        replacement += QByteArray::number(number);
        world.folder.write(u"from/a/"_s + QString::number(number), QByteArray::number(number));
        world.folder.write(u"to/a/"_s + QString::number(number), "old");
    }
    return replacement;
}

void startAgain(World &world)
{
    // A command on its way into life holds the note for a moment longer than the program.
    QTRY_VERIFY((SetAside::replay(world.engine.journal(), world.workspace),
                 world.leftovers() == 0 && world.engine.journal().abandoned().isEmpty()));
}

QString oldAndNew(bool folder)
{
    return folder ? u"from/a/x=new, to/a/x=old"_s : u"from/a=new, to/a=old"_s;
}

} // namespace

void tst_Killed::theProgramAtAStep_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("folder");
    const char *steps[] = { "before the item is set aside", "before the command",
                            "with half a copy", "after the command", "on the way to the Trash" };
    for (int step = 0; step < 5; ++step) {
        for (const bool folder : { false, true }) {
            const char *what = folder ? "folder" : "file";
            // A file that was copied by half is removed, and the old one needs no Trash.
            if (step < 4 || folder)
                QTest::addRow("copy of a %s, %s", what, steps[step])
                    << step << Operation::Copy << folder;
            QTest::addRow("move of a %s, %s", what, steps[step])
                << step << Operation::Move << folder;
        }
    }
}

void tst_Killed::theProgramAtAStep()
{
    QFETCH(int, step);
    QFETCH(Operation, operation);
    QFETCH(bool, folder);
    World world(oldAndNew(folder));
    world.sheet.onText = [&](const QString &) {
        if (step == 0)
            killSelf();
    };
    world.programs.before = [&](const QStringList &arguments) -> std::optional<int> {
        if (step == 2 || step == 4)
            makeTree(world.folder, folder ? u"to/a/y=half"_s : u"to/a=half"_s);
        if (step == 3)
            DesktopPrograms().run(arguments);
        if (step != 4)
            killSelf();
        return 1;
    };
    world.workspace.beforeTrash = killSelf;
    runAndDie(world, operation);
    world.workspace.beforeTrash = nullptr;
    startAgain(world);
    QVERIFY(contentsBelow(world.folder.path()).contains("new"));
    // What has something else at its name does not come back to it.
    const QString place = (step < 2 ? u"to/a"_s : u"trash/a"_s) + (folder ? u"/x"_s : u""_s);
    QCOMPARE(world.folder.read(place), "old");
}

void tst_Killed::theProgramAtAnyMoment_data()
{
    QTest::addColumn<int>("percent");
    for (int percent = 2; percent < 100; percent += 4)
        QTest::addRow("after %d %% of its way", percent) << percent;
}

void tst_Killed::theProgramAtAnyMoment()
{
    QFETCH(int, percent);
    static const int all = [] { // calls to the kernel
        World whole(oldAndNew(true));
        makeLargeFolders(whole);
        return callsUntilKilled([&] { replace(whole, Operation::Move); }, 0);
    }();
    World world(oldAndNew(true));
    const QSet<QByteArray> replacement = makeLargeFolders(world);
    const int last = all * percent / 100;
    QCOMPARE(callsUntilKilled([&] { replace(world, Operation::Move); }, last), last);
    startAgain(world);
    const auto found = contentsBelow(world.folder.path());
    QVERIFY(found.contains(replacement));
    // Until the replacement stands the old item is whole.
    QVERIFY(found.contains("old") || world.to(u"a/x"_s) == "new");
}

void tst_Killed::theCommand()
{
    for (const bool folder : { false, true }) {
        World world(oldAndNew(folder));
        world.programs.onStart = [](pid_t process) { kill(process, SIGKILL); };
        bool failed = false;
        world.alerts.decide = [&](const Alert &alert) {
            failed = alert.buttons.size() == 1;
            return failed ? Alert::Ok : Alert::Yes;
        };
        world.run(Operation::Copy, { u"a"_s });
        const auto found = contentsBelow(world.folder.path());
        QVERIFY(found.contains("new"));
        QVERIFY(found.contains("old") || !failed); // a quick command ends before it is killed
        QCOMPARE(world.leftovers(), 0);
    }
}

void tst_Killed::anItemOfAnUnmountedVolumeIsBroughtBackLater()
{
    World world(oldAndNew(false));
    world.programs.before = [](const QStringList &) -> std::optional<int> {
        killSelf();
        return 1;
    };
    runAndDie(world, Operation::Copy);
    const auto rename = [&](const QString &from, const QString &to) {
        std::filesystem::rename(FileName::toBytes(world.folder.path(from)).toStdString(),
                                FileName::toBytes(world.folder.path(to)).toStdString());
    };
    // Without its volume a mount point is another, empty folder.
    rename(u"to"_s, u"volume"_s);
    world.folder.makeFolder(u"to"_s);
    SetAside::replay(world.engine.journal(), world.workspace);
    std::filesystem::remove(FileName::toBytes(world.destination).toStdString());
    rename(u"volume"_s, u"to"_s);
    startAgain(world);
    QCOMPARE(world.to(u"a"_s), "old");
}

QTEST_GUILESS_MAIN(tst_Killed)
#include "tst_Killed.moc"
