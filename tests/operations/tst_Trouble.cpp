#include "tests/operations/OperationWorld.h"

#include <QTest>

#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A mount that goes when the test ends, however it ends.
class TestMount {
public:
    explicit TestMount(const QString &point)
        : _point(FileName::toBytes(point))
    {
    }
    ~TestMount()
    {
        if (_mounted)
            umount2(_point, MNT_DETACH);
    }
    TestMount(const TestMount &) = delete;
    TestMount &operator=(const TestMount &) = delete;

    bool tiny() { return _mounted = mount("none", _point, "tmpfs", 0, "size=64k") == 0; }
    bool bind(const QString &folder)
    {
        return _mounted = mount(FileName::toBytes(folder), _point, nullptr, MS_BIND, nullptr) == 0;
    }
    bool readOnly(const QString &folder)
    {
        return bind(folder)
            && mount(nullptr, _point, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    QByteArray _point;
    bool _mounted = false;
};

mode_t typeOf(const QString &path)
{
    struct stat status { };
    lstat(FileName::toBytes(path), &status);
    return status.st_mode & S_IFMT;
}

} // namespace

// What the machine can do to an operation: full and read-only disks, other names for one folder,
// items that are no plain files, two requests at once.
class tst_Trouble : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aFullDiskKeepsBoth_data();
    void aFullDiskKeepsBoth();
    void aReadOnlyFolderFailsOnceAnItem();
    void anotherMountOfAFolderIsTheSameFolder();
    void whatCannotBeReadReplacesNothing();
    void oddItemsReplaceAndAreReplaced_data();
    void oddItemsReplaceAndAreReplaced();
    void allOfOneRunAndALateCancelDoNotReachTheNext();
    void aSecondCancelEndsTheRunThatWaits();
};

void tst_Trouble::initTestCase()
{
    // Its mounts are nobody else's, and end with it even when it is killed.
    if (unshare(CLONE_NEWNS) == 0)
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

void tst_Trouble::aFullDiskKeepsBoth_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("folder");
    QTest::newRow("copy of a file") << Operation::Copy << false;
    QTest::newRow("copy of a folder") << Operation::Copy << true;
    QTest::newRow("move of a file") << Operation::Move << false;
    QTest::newRow("move of a folder") << Operation::Move << true;
}

void tst_Trouble::aFullDiskKeepsBoth()
{
    QFETCH(Operation, operation);
    QFETCH(bool, folder);
    World world;
    TestMount disk(world.destination);
    if (!disk.tiny())
        QSKIP("mounting is not allowed here");
    const QByteArray large(200'000, 'n');
    if (folder) {
        world.folder.makeFolder(u"from/a"_s);
        world.folder.makeFolder(u"to/a"_s);
    }
    world.folder.write(folder ? u"from/a/x"_s : u"from/a"_s, large);
    world.folder.write(folder ? u"to/a/x"_s : u"to/a"_s, "old");
    world.alerts.answer(Alert::Yes);
    world.alerts.answer(Alert::Ok);
    world.run(operation, { u"a"_s });
    const auto found = contentsBelow(world.folder.path());
    QVERIFY(found.contains(large));
    QVERIFY(found.contains("old"));
    QCOMPARE(world.leftovers(), 0);
    if (operation == Operation::Copy && !folder)
        QCOMPARE(world.to(u"a"_s), "old");
}

void tst_Trouble::aReadOnlyFolderFailsOnceAnItem()
{
    World world;
    for (const QString &name : { u"from/a"_s, u"from/b"_s, u"to/a"_s })
        world.folder.write(name, name.toUtf8());
    TestMount disk(world.destination);
    if (!disk.readOnly(world.destination))
        QSKIP("mounting is not allowed here");
    const auto before = contentsBelow(world.folder.path());
    const auto failsWith = [&](const QString &text, const std::function<void()> &operation) {
        const auto shown = world.alerts.shown().size();
        world.alerts.answer(Alert::Ok);
        operation();
        QCOMPARE(world.alerts.shown().size(), shown + 1);
        QCOMPARE(world.alerts.shown().last().text, text);
        QCOMPARE(contentsBelow(world.folder.path()), before);
    };
    world.alerts.answer(Alert::All);
    world.alerts.answer(Alert::Ok);
    world.alerts.answer(Alert::Ok);
    world.run(Operation::Copy, { u"a"_s, u"b"_s });
    QCOMPARE(world.alerts.shown().last().text, u"Copy progress of 'b' failed!"_s);
    QCOMPARE(contentsBelow(world.folder.path()), before);
    failsWith(u"Move progress of 'b' failed!"_s, [&] { world.run(Operation::Move, { u"b"_s }); });
    failsWith(u"Create alias for 'b' failed!"_s,
              [&] { world.steps.createAlias(world.request({ u"b"_s })); });
    failsWith(u"Duplicate failed!"_s, [&] {
        world.steps.duplicateItem(world.folder.path(u"from/b"_s), world.folder.path(u"to/a"_s));
    });
    AcceptedRequest inside = world.request({ u"a"_s });
    inside.source = world.destination;
    failsWith(u"Delete failed!"_s, [&] { world.steps.deleteItems(inside); });
    inside.items = { u"new"_s };
    failsWith(u"Cannot create folder!"_s, [&] { world.steps.newFolder(inside, world.record); });
    inside.source = world.folder.path(u"to/a"_s);
    inside.destination = world.folder.path(u"to/b"_s);
    failsWith(u"Rename failed!"_s, [&] { world.steps.renameItem(inside, world.record); });
}

void tst_Trouble::anotherMountOfAFolderIsTheSameFolder()
{
    World world;
    world.folder.makeFolder(u"from/a/deep"_s);
    world.folder.write(u"from/a/x"_s, "only");
    for (const QString &shown : { u"from"_s, u"from/a"_s, u"from/a/deep"_s }) {
        TestMount second(world.destination);
        if (!second.bind(world.folder.path(shown)))
            QSKIP("mounting is not allowed here");
        for (const auto operation : { Operation::Copy, Operation::Move }) {
            world.alerts.answer(Alert::Ok);
            world.run(operation, { u"a"_s });
        }
    }
    QVERIFY(world.programs.runs.isEmpty());
    QCOMPARE(world.from(u"a/x"_s), "only");
}

void tst_Trouble::whatCannotBeReadReplacesNothing()
{
    if (geteuid() == 0)
        QSKIP("root reads everything");
    World world;
    world.folder.write(u"from/a"_s, "new");
    world.folder.write(u"to/a"_s, "old");
    chmod(FileName::toBytes(world.folder.path(u"from/a"_s)), 0);
    world.alerts.answer(Alert::Yes);
    world.alerts.answer(Alert::Ok);
    world.run(Operation::Copy, { u"a"_s });
    QCOMPARE(world.to(u"a"_s), "old");
}

void tst_Trouble::oddItemsReplaceAndAreReplaced_data()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : { u"fifo"_s, u"socket"_s, u"sparse"_s, u"dangling link"_s,
                                 u"link loop"_s, u"hard-linked pair"_s, u"set-id"_s })
        QTest::newRow(qPrintable(kind)) << kind;
}

void tst_Trouble::oddItemsReplaceAndAreReplaced()
{
    QFETCH(QString, kind);
    World world;
    const QByteArray path = FileName::toBytes(world.folder.path(u"from/a"_s));
    if (kind == u"fifo"_s) {
        QCOMPARE(mkfifo(path, 0600), 0);
    } else if (kind == u"socket"_s) {
        sockaddr_un address { .sun_family = AF_UNIX, .sun_path = {} };
        qstrncpy(address.sun_path, path, sizeof address.sun_path);
        const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        QCOMPARE(bind(server, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        close(server);
    } else if (kind == u"dangling link"_s) {
        world.folder.link(u"nowhere"_s, u"from/a"_s);
    } else if (kind == u"link loop"_s) {
        world.folder.link(u"a"_s, u"from/a"_s);
    } else {
        world.folder.write(u"from/a"_s, "odd");
        if (kind == u"sparse"_s)
            QCOMPARE(truncate(path, off_t(1) << 36), 0);
        if (kind == u"hard-linked pair"_s)
            world.folder.hardLink(u"from/a"_s, u"from/b"_s);
        if (kind == u"set-id"_s)
            QCOMPARE(chmod(path, 06755), 0);
    }
    const QStringList items = world.folder.names(u"from"_s);
    const mode_t type = typeOf(world.folder.path(u"from/a"_s));
    for (const QString &name : items)
        world.folder.write(u"to/"_s + name, "old");
    for (const auto operation : { Operation::Copy, Operation::Move }) {
        world.alerts.answer(Alert::All);
        world.run(operation, items);
        for (const QString &name : items)
            QCOMPARE(typeOf(world.folder.path(u"to/"_s + name)), type);
    }
    QVERIFY(world.folder.names(u"from"_s).isEmpty());

    // The odd one is replaced, and it alone.
    world.folder.write(u"from/a"_s, "plain");
    world.alerts.answer(Alert::Yes);
    world.run(Operation::Copy, { u"a"_s });
    QCOMPARE(world.to(u"a"_s), "plain");
    QCOMPARE(world.folder.names(u"to"_s), items);
}

void tst_Trouble::allOfOneRunAndALateCancelDoNotReachTheNext()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s, u"c"_s }) {
        world.folder.write(u"from/"_s + name, "new");
        world.folder.write(u"to/"_s + name, "old");
    }
    world.sheet.onText = [&](const QString &text) {
        if (text == u"Copy progress finished."_s)
            world.engine.cancelThread();
    };
    world.alerts.answer(Alert::All);
    world.alerts.answer(Alert::Yes);
    world.start(Operation::Copy, { u"a"_s, u"b"_s });
    world.run(Operation::Move, { u"c"_s });
    QCOMPARE(world.alerts.shown().last().text, u"Target 'c' already exists! Overwrite?"_s);
    QCOMPARE(world.to(u"c"_s), "new");
}

void tst_Trouble::aSecondCancelEndsTheRunThatWaits()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s })
        world.folder.write(u"from/"_s + name, "new");
    world.programs.before = [&](const QStringList &) -> std::optional<int> {
        world.engine.cancelThread();
        world.engine.cancelThread();
        return std::nullopt;
    };
    world.start(Operation::Copy, { u"a"_s });
    world.run(Operation::Copy, { u"b"_s });
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"a"_s });
}

QTEST_MAIN(tst_Trouble)
#include "tst_Trouble.moc"
