#include "tests/operations/OperationWorld.h"

#include <QTest>

class tst_SingleSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsReplacedByAStep()
    {
        const QString two = u"from/a=a, from/taken=taken"_s;
        const std::tuple<Verb, QString, QString, QString> cases[] = {
            // what is left: all, if none
            { Verb::Rename, two, u"A"_s, u"from/A=a, from/taken=taken"_s },
            { Verb::Rename, two, u"taken"_s, {} },
            { Verb::Rename, two, u"../trash/x"_s, {} },
            { Verb::Rename, two, u"."_s, {} },
            { Verb::Rename, two, u".."_s, {} },
            { Verb::Rename, two, QString(256, u'n'), {} },
            { Verb::Rename, u"from/a=!a"_s, u"b"_s, {} },
            { Verb::Duplicate, u"from/a=new, from/b=old"_s, u"b"_s,
              u"from/a=new, from/b=new, trash/b=old"_s },
            { Verb::Duplicate, u"from/a/x=new, from/b/a/x=old, from/b/y=y"_s, u"b"_s,
              u"from/a/x=new, from/b/a/x=new, from/b/y=y, trash/a/x=old"_s },
            { Verb::Duplicate, u"from/a=new, from/b=!old"_s, u"b"_s, {} },
        };
        for (const auto &[verb, given, newName, left] : cases) {
            World world(given);
            if (left.isEmpty())
                world.answer({ Alert::Ok });
            world.perform(verb, u"a"_s, newName);
            QCOMPARE(newName + u": "_s + world.tree(),
                     newName + u": "_s + (left.isEmpty() ? given : left));
            const QString failed =
                verb == Verb::Rename ? u"Rename failed!"_s : u"Duplicate failed!"_s;
            QCOMPARE(world.lastAlert().text, left.isEmpty() ? failed : QString());
            QCOMPARE(world.record.refused.has_value(), verb == Verb::Rename && left.isEmpty());
            if (newName == u"taken")
                QCOMPARE(world.lastAlert().details, u"a: File exists"_s);
            if (verb == Verb::Rename)
                QCOMPARE(world.record.item, PathText::joined(world.source, newName));
        }
    }

    void aSetGoesOnWithOneAlertAtMost()
    {
        World world(u"from/a=a, from/b=b, from/locked=!c"_s);
        world.perform(Verb::Delete, u"a"_s);
        world.answer({ Alert::Ok, Alert::Ok });
        world.steps.deleteItems(world.request({ u"b"_s, u"locked"_s }));
        QCOMPARE(world.lastAlert().details, u"locked: The item is locked."_s);
        world.workspace.trashWorks = false;
        world.steps.deleteItems(world.request({ u"b"_s, u"gone"_s }));
        QCOMPARE(world.lastAlert().text, u"Delete failed!"_s);
        QCOMPARE(world.lastAlert().details, u"b: The Trash is out of order."_s);
        world.workspace.trashWorks = true;
        world.workspace.refusals[world.source + u"/long\n"_s] = u"Too long."_s;
        world.answer({ Alert::Ok });
        world.steps.deleteItems(world.request({ u"b"_s, u"long\n"_s, u"locked"_s }));
        QCOMPARE(world.lastAlert().details,
                 FileName::shown(u"long\n"_s) + u": Too long.\nlocked: The item is locked."_s);
        QCOMPARE(world.tree(), u"from/b=b, from/locked=!c, trash/a=a"_s);

        World aliases(u"from/elsewhere/, to/b->~/from/elsewhere"_s);
        aliases.answer({ Alert::Ok });
        aliases.steps.createAlias(aliases.request({ u"a"_s, u"b"_s, u"c"_s }));
        QCOMPARE(aliases.lastAlert().text, u"Create alias for 'b' failed!"_s);
        QVERIFY(aliases.lastAlert().details.endsWith(u"File exists"));
        QCOMPARE(aliases.tree(),
                 u"from/elsewhere/, to/a->~/from/a, to/b->~/from/elsewhere, to/c->~/from/c"_s);
    }
};

QTEST_MAIN(tst_SingleSteps)
#include "tst_SingleSteps.moc"
