#include "tests/operations/OperationWorld.h"
#include "tests/support/OwnMounts.h"

#include <sys/stat.h>

namespace {

mode_t typeOf(const QString &path)
{
    struct stat status { };
    lstat(FileName::toBytes(path), &status);
    return status.st_mode & S_IFMT;
}

} // namespace

// What the machine can do to an operation: full and read-only disks, other names for one folder and
// items that are no plain files.
class tst_Trouble : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFullDiskKeepsBoth()
    {
        const QString large(200'000, u'n');
        for (const auto &[operation, given] : {
                 std::pair(Operation::Copy, u"to/a=old, from/a="_s),
                 std::pair(Operation::Copy, u"to/a/x=old, from/a/x="_s),
                 std::pair(Operation::Move, u"to/a=old, from/a="_s),
                 std::pair(Operation::Move, u"to/a/x=old, from/a/x="_s),
             }) {
            World world;
            TestMount disk(world.destination);
            disk.fresh("size=64k");
            makeTree(world.folder, given + large);
            world.alerts.answer({ Alert::Yes, Alert::Ok });
            world.run(operation, { u"a"_s });
            const auto found = world.contents();
            QVERIFY2(found.contains(large.toLatin1()), qPrintable(given));
            QVERIFY2(found.contains("old"), qPrintable(given));
            QCOMPARE(world.leftovers(), 0);
            if (operation == Operation::Copy && !given.contains(u'x'))
                QCOMPARE(world.to(u"a"_s), "old");
        }
    }

    void aReadOnlyFolderFailsOnceAnItem()
    {
        World world(u"from/a=a, from/b=b"_s);
        TestMount disk(world.destination);
        disk.fresh("size=64k");
        makeTree(world.folder, u"to/a=c"_s);
        disk.makeReadOnly();
        const QString before = world.tree();
        world.alerts.answer({ Alert::All, Alert::Ok, Alert::Ok });
        world.run(Operation::Copy, { u"a"_s, u"b"_s });
        QCOMPARE(world.alerts.last().text, u"Copy progress of 'b' failed!"_s);
        const auto fails = [&](const QString &text, Verb verb, const QString &name,
                               const QString &newName = {}) {
            world.alerts.answer({ Alert::Ok });
            world.perform(verb, name, newName);
            QCOMPARE(world.alerts.last().text, text);
            QCOMPARE(world.tree(), before);
        };
        fails(u"Move progress of 'b' failed!"_s, Verb::Move, u"b"_s);
        fails(u"Create alias for 'b' failed!"_s, Verb::Alias, u"b"_s);
        fails(u"Duplicate failed!"_s, Verb::Duplicate, u"b"_s, u"../to/a"_s);
        world.source = world.destination;
        fails(u"Delete failed!"_s, Verb::Delete, u"a"_s);
        fails(u"Cannot create folder!"_s, Verb::NewFolder, u"new"_s);
        fails(u"Rename failed!"_s, Verb::Rename, u"a"_s, u"b"_s);
        QCOMPARE(world.alerts.shown().size(), 9);
    }

    void anotherMountOfAFolderIsTheSameFolder()
    {
        World world(u"from/a/deep/, from/a/x=only"_s);
        for (const QString &shown : { u"from"_s, u"from/a"_s, u"from/a/deep"_s }) {
            TestMount second(world.destination);
            second.show(world.folder.path(shown));
            for (const auto operation : { Operation::Copy, Operation::Move }) {
                world.alerts.answer({ Alert::Ok });
                world.run(operation, { u"a"_s });
            }
        }
        QVERIFY(world.programs.runs.isEmpty());
        QCOMPARE(world.from(u"a/x"_s), "only");
    }

    void whatCannotBeReadReplacesNothing()
    {
        World world(u"from/a=new, to/a=old"_s);
        chmod(world.folder.bytes(u"from/a"_s), 0);
        world.alerts.answer({ Alert::Yes, Alert::Ok });
        world.run(Operation::Copy, { u"a"_s });
        QCOMPARE(world.to(u"a"_s), "old");
    }

    void oddItemsReplaceAndAreReplaced()
    {
        for (const QString &made :
             { u"mkfifo from/a"_s,
               u"python3 -c 'import socket as s; s.socket(s.AF_UNIX).bind(\"from/a\")'"_s,
               u"truncate -s 64G from/a"_s, u"touch from/a; chmod 6755 from/a"_s,
               u"ln -s nowhere from/a"_s, u"ln -s a from/a"_s,
               u"touch from/a; ln from/a from/b"_s }) {
            World world;
            world.folder.shell(made);
            const QStringList items = world.folder.names(u"from"_s);
            const mode_t type = typeOf(world.folder.path(u"from/a"_s));
            for (const QString &name : items)
                world.folder.write(u"to/"_s + name, "old");
            for (const auto operation : { Operation::Copy, Operation::Move }) {
                world.alerts.answer(Alert::All);
                world.run(operation, items);
                for (const QString &name : items)
                    QVERIFY2(typeOf(world.folder.path(u"to/"_s + name)) == type, qPrintable(made));
            }
            QVERIFY(world.folder.names(u"from"_s).isEmpty());

            // The odd one is replaced, and it alone.
            world.folder.write(u"from/a"_s, "plain");
            world.alerts.answer(Alert::Yes);
            world.run(Operation::Copy, { u"a"_s });
            QCOMPARE(world.to(u"a"_s), "plain");
            QCOMPARE(world.folder.names(u"to"_s), items);
        }
    }
};

TWINLEAF_MAIN_WITH_MOUNTS(tst_Trouble)
#include "tst_Trouble.moc"
