#include "operations/Undoing.h"

#include "tests/operations/OperationWorld.h"
#include "tests/support/AsOnFat.h"
#include "tests/support/FolderTrashCan.h"

namespace {

struct UndoWorld : World {
    explicit UndoWorld(const QString &words, Device device = Device::Same)
        : World(words, device)
    {
        workspace.trash = &trashCan;
    }

    void operate(Verb verb, const QStringList &items, const QString &newName = {})
    {
        if (verb == Verb::Copy || verb == Verb::Move)
            done = runHere(verb == Verb::Copy ? Operation::Copy : Operation::Move, items);
        else if (verb == Verb::Delete)
            done = steps.deleteItems(request(items));
        else if (verb == Verb::Alias)
            done = steps.createAlias(request(items));
        else if (verb == Verb::Duplicate)
            done = steps.duplicateItem(PathText::joined(source, items.first()),
                                       PathText::joined(source, newName));
        else
            perform(verb, items.first(), newName);
        if (verb == Verb::NewFolder || verb == Verb::Rename)
            done = record.done;
    }
    // What was told.
    QString undo(const std::function<bool()> &isCancelled = [] { return false; })
    {
        Undoing undoing({ programs, workspace, engine.journal(), {}, isCancelled });
        done = undoing.undo(done);
        return undoing.told().join(u" | "_s);
    }

    FolderTrashCan trashCan { workspace };
    DoneItems done;
};

struct Case {
    const char *what;
    Verb verb;
    QString given;
    QStringList items;
    QString between {}; // what another program does meanwhile
    QString told {};
    QString left {}; // what was given, if nothing
    QString newName {};
    QList<Alert::Answer> answers {};
};

QList<Case> cases()
{
    const QString taken = u": Another item stands at its old place."_s;
    const QString another = u": Another item has come to its place."_s;
    const QString changed = u": It was changed since, or something in it was."_s;
    const QString kinds = u"from/a=a, from/b/x=x, from/l->~/nowhere, from/p=p, from/q=p"_s;
    const QString replaced = u"from/a=a, from/b=new, to/a=kept, to/b=old"_s;
    const QStringList all { u"a"_s, u"b"_s, u"l"_s, u"p"_s, u"q"_s };
    const QStringList a { u"a"_s };
    const QStringList b { u"b"_s };
    const QString folder = u"from/b/c/x=x"_s;
    return {
        { "rename", Verb::Rename, u"from/a=a"_s, a, {}, {}, {}, u"b"_s },
        { "only the case", Verb::Rename, u"from/a=a"_s, a, {}, {}, {}, u"A"_s },
        { "rename, edited",
          Verb::Rename,
          u"from/a=a"_s,
          a,
          u"echo -n x > from/b"_s,
          {},
          u"from/a=x"_s,
          u"b"_s },
        { "rename, taken", Verb::Rename, u"from/a=a"_s, a, u"echo -n x > from/a"_s, u"b"_s + taken,
          u"from/a=x, from/b=a"_s, u"b"_s },
        { "rename, another", Verb::Rename, u"from/a=a"_s, a,
          u"mv from/b from/c; echo -n x > from/b"_s, u"b"_s + another, u"from/b=x, from/c=a"_s,
          u"b"_s },
        { "rename, gone", Verb::Rename, u"from/a=a"_s, a, u"rm from/b; touch from/x"_s,
          u"b: No such file or directory"_s, u"from/x="_s, u"b"_s },
        { "rename, locked", Verb::Rename, u"from/a=a"_s, a,
          u"python3 -c \"import os; os.setxattr('from/b', 'user.twinleaf.locked', b'1')\""_s,
          u"b: The item is locked."_s, u"from/b=a"_s, u"b"_s },
        { "move", Verb::Move, kinds, all },
        { "move, edited",
          Verb::Move,
          u"from/a=a"_s,
          a,
          u"echo -n x >> to/a"_s,
          {},
          u"from/a=ax"_s },
        { "move, in part",
          Verb::Move,
          u"from/a=a, from/b=b"_s,
          { u"a"_s, u"b"_s },
          u"echo -n x > from/a"_s,
          u"a"_s + taken,
          u"from/a=x, from/b=b, to/a=a"_s },
        { "move, no folder", Verb::Move, u"from/a=a"_s, a, u"rmdir from"_s,
          u"a: ~/from: No such file or directory"_s, u"to/a=a"_s },
        { "move over",
          Verb::Move,
          u"from/a=new, to/a=old"_s,
          a,
          {},
          u"a: It is back, but what it had replaced is gone for good."_s,
          u"from/a=new"_s,
          {},
          { Alert::Yes } },
        { "move over, after No",
          Verb::Move,
          replaced,
          { u"a"_s, u"b"_s },
          {},
          {},
          {},
          {},
          { Alert::No } },
        { "copy",
          Verb::Copy,
          kinds,
          all,
          {},
          {},
          kinds + u", trash/a=a, trash/b/x=x, trash/l->~/nowhere, trash/p=p, trash/q=p"_s },
        { "copy, edited", Verb::Copy, u"from/a=a"_s, a, u"echo -n x > to/a"_s, u"a"_s + changed,
          u"from/a=a, to/a=x"_s },
        { "copy, put into", Verb::Copy, folder, b, u"touch to/b/c/y"_s, u"b"_s + changed,
          u"from/b/c/x=x, to/b/c/x=x, to/b/c/y="_s },
        { "copy, edited inside", Verb::Copy, folder, b, u"echo -n y > to/b/c/x"_s, u"b"_s + changed,
          u"from/b/c/x=x, to/b/c/x=y"_s },
        { "copy, old put over inside", Verb::Copy, folder, b,
          u"echo -n y > y; touch -d 2001-01-01 y; mv y to/b/c/x"_s, u"b"_s + changed,
          u"from/b/c/x=x, to/b/c/x=y"_s },
        { "copy, other rights",
          Verb::Copy,
          folder,
          b,
          u"chmod 700 to/b"_s,
          {},
          folder + u", trash/b/c/x=x"_s },
        { "copy over",
          Verb::Copy,
          u"from/a=new, to/a=old"_s,
          a,
          {},
          u"a: It stays, for what it has replaced is gone for good."_s,
          u"from/a=new, to/a=new"_s,
          {},
          { Alert::Yes } },
        { "copy over, after No",
          Verb::Copy,
          replaced,
          { u"a"_s, u"b"_s },
          {},
          {},
          replaced + u", trash/b.1=new"_s,
          {},
          { Alert::No } },
        { "copy over, not in the Trash",
          Verb::Copy,
          replaced,
          { u"a"_s, u"b"_s },
          u"rm trash/b"_s,
          u"b: What it had replaced is not back: It does not lie in the Trash any more."_s,
          u"from/a=a, from/b=new, to/a=kept, trash/b=new"_s,
          {},
          { Alert::No } },
        { "delete", Verb::Delete, kinds, all },
        { "delete, taken",
          Verb::Delete,
          u"from/a=a, from/b=b"_s,
          { u"a"_s, u"b"_s },
          u"echo -n x > from/a"_s,
          u"a: File exists"_s,
          u"from/a=x, from/b=b, trash/a=a"_s },
        { "new folder", Verb::NewFolder, {}, a, {}, {}, u"trash/a/"_s },
        { "new folder, used",
          Verb::NewFolder,
          {},
          a,
          u"touch from/a/x"_s,
          u"a: It is not empty any more."_s,
          u"from/a/x="_s },
        { "alias", Verb::Alias, u"from/a=a"_s, a, {}, {}, u"from/a=a, trash/a->~/from/a"_s },
        { "duplicate",
          Verb::Duplicate,
          u"from/a=a"_s,
          a,
          {},
          {},
          u"from/a=a, trash/d=a"_s,
          u"d"_s },
    };
}

} // namespace

class tst_Undoing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyOperationIsUndoneAsFarAsNothingChanged()
    {
        for (const Case &each : cases())
            for (const auto device : { Device::Same, Device::Other }) {
                // The folder that stands for the Trash takes nothing from another disk.
                if (device == Device::Other
                    && (each.verb != Verb::Move || each.answers.contains(Alert::No)))
                    continue;
                UndoWorld world(each.given, device);
                world.alerts.answer(each.answers);
                world.operate(each.verb, each.items, each.newName);
                world.folder.shell(each.between);
                const QString told = world.undo().replace(world.folder.path(), u"~"_s);
                QVERIFY2(told == each.told, qPrintable(QLatin1String(each.what) + u": "_s + told));
                const QString left = world.tree();
                QVERIFY2(left == (each.left.isNull() ? each.given : each.left),
                         qPrintable(QLatin1String(each.what) + u": "_s + left));
                QVERIFY(world.done.items().isEmpty());
            }
    }

    void namesAreData()
    {
        for (const QString &name : { u"-m"_s, u"$(rm -rf from) `rm from`"_s, u"a\nb"_s,
                                     FileName::fromBytes("\xff"), QString(255, u'n') })
            for (const auto verb : { Verb::Rename, Verb::Move, Verb::Copy, Verb::Delete })
                for (const auto device : { Device::Same, Device::Other }) {
                    UndoWorld world({}, verb == Verb::Move ? device : Device::Same);
                    world.folder.write(u"from/"_s + name, "kept");
                    world.operate(verb, { name }, u"plain"_s);
                    QCOMPARE(world.undo(), QString());
                    QCOMPARE(world.folder.names(u"from"_s), QStringList(name));
                    QVERIFY(world.folder.names(u"to"_s).isEmpty());
                }
    }

    void aCancelledUndoIsGoneOnWith()
    {
        const QString given = u"from/a=a, from/b=b, from/c=c"_s;
        for (const auto device : { Device::Same, Device::Other }) {
            UndoWorld world(given, device);
            world.operate(Verb::Move, { u"a"_s, u"b"_s, u"c"_s });
            int asked = 0;
            world.undo([&] { return asked++ == 1; });
            QCOMPARE(world.tree(), u"from/c=c, to/a=a, to/b=b"_s);
            QCOMPARE(world.done.items().size(), 2);
            world.undo();
            QCOMPARE(world.tree(), given);
        }
    }

    // As the empty folder that is left where a volume was.
    void nothingIsMovedBackToAnotherDisk()
    {
        UndoWorld world(u"from/a=a, to/f/, to/f/x=x"_s, Device::Other);
        world.operate(Verb::Move, { u"a"_s });
        world.folder.shell(u"mv from was; ln -s to/f from"_s);
        QCOMPARE(world.undo(), u"a: Another disk is at its old place, or none."_s);
        QCOMPARE(world.to(u"a"_s), "a");
    }

    void whatFailedIsNotUndone()
    {
        UndoWorld world(u"from/a=a, from/c=c"_s);
        world.alerts.answer({ Alert::Ok });
        world.operate(Verb::Copy, { u"a"_s, u"b"_s, u"c"_s });
        QCOMPARE(world.undo(), QString());
        QCOMPARE(world.tree(), u"from/a=a, from/c=c, trash/a=a, trash/c=c"_s);
        // Nor what the Trash refuses.
        world.operate(Verb::Copy, { u"a"_s });
        world.workspace.trashWorks = false;
        QCOMPARE(world.undo(), u"a: The Trash is out of order."_s);
        QCOMPARE(world.to(u"a"_s), "a");
    }

    // Put in again, FAT has other inode numbers: then only what is unchanged is known again.
    void whereNumbersAreMadeUpTimesDecide()
    {
        onFat = true;
        for (const bool edited : { false, true }) {
            UndoWorld world(u"from/a=a, from/b=b"_s);
            world.folder.setModified(u"from/a"_s, 1'000'000'000);
            world.operate(Verb::Copy, { u"a"_s });
            world.folder.shell(u"mv to volume; cp -a volume to; rm -r volume"_s);
            if (edited)
                world.folder.write(u"to/a"_s, "b");
            QCOMPARE(world.undo().isEmpty(), !edited);
            QCOMPARE(world.folder.names(u"trash"_s).isEmpty(), edited);
        }
        onFat = false;
    }
};

QTEST_GUILESS_MAIN(tst_Undoing)
#include "tst_Undoing.moc"
