#include "tests/operations/OperationWorld.h"

#include <QTest>

class tst_SingleSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsReplacedByAStep_data();
    void nothingIsReplacedByAStep();
    void aSetGoesToTheTrashWithOneAlertAtMost();
    void aliasesGoOnAfterOneThatFails();
};

void tst_SingleSteps::nothingIsReplacedByAStep_data()
{
    QTest::addColumn<Verb>("verb");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("newName");
    QTest::addColumn<QString>("left"); // where it is done
    const auto renames = [](const char *name, const QString &newName, const QString &left = {}) {
        QTest::newRow(name) << Verb::Rename << u"from/a=a, from/taken=taken"_s << newName << left;
    };
    renames("to another case", u"A"_s, u"from/A=a, from/taken=taken"_s);
    renames("to an existing name", u"taken"_s);
    renames("to a path", u"../trash/x"_s);
    renames("to a dot", u"."_s);
    renames("to two dots", u".."_s);
    renames("too long", QString(256, u'n'));
    QTest::newRow("of a locked item") << Verb::Rename << u"from/a=!a"_s << u"b"_s << QString();
    QTest::newRow("duplicate over a file") << Verb::Duplicate << u"from/a=new, from/b=old"_s
                                           << u"b"_s << u"from/a=new, from/b=new, trash/b=old"_s;
    QTest::newRow("duplicate into a folder")
        << Verb::Duplicate << u"from/a/x=new, from/b/a/x=old, from/b/y=y"_s << u"b"_s
        << u"from/a/x=new, from/b/a/x=new, from/b/y=y, trash/a/x=old"_s;
    QTest::newRow("duplicate over a locked file")
        << Verb::Duplicate << u"from/a=new, from/b=!old"_s << u"b"_s << QString();
}

void tst_SingleSteps::nothingIsReplacedByAStep()
{
    QFETCH(Verb, verb);
    QFETCH(QString, given);
    QFETCH(QString, newName);
    QFETCH(QString, left);
    World world(given);
    if (left.isEmpty())
        world.answer({ Alert::Ok });
    world.perform(verb, u"a"_s, newName);
    QCOMPARE(world.tree(), left.isEmpty() ? given : left);
    const QString failed = verb == Verb::Rename ? u"Rename failed!"_s : u"Duplicate failed!"_s;
    QCOMPARE(world.lastAlert().text, left.isEmpty() ? failed : QString());
    if (verb == Verb::Rename)
        QCOMPARE(world.record.item, PathText::joined(world.source, newName));
}

void tst_SingleSteps::aSetGoesToTheTrashWithOneAlertAtMost()
{
    World world(u"from/a=a, from/b=b, from/locked=!c"_s);
    world.perform(Verb::Delete, u"a"_s);
    world.answer({ Alert::Ok, Alert::Ok });
    world.steps.deleteItems(world.request({ u"b"_s, u"locked"_s }));
    world.workspace.trashWorks = false;
    world.steps.deleteItems(world.request({ u"b"_s, u"gone"_s }));
    QCOMPARE(world.lastAlert().text, u"Delete failed!"_s);
    QCOMPARE(world.tree(), u"from/b=b, from/locked=!c, trash/a=a"_s);
}

void tst_SingleSteps::aliasesGoOnAfterOneThatFails()
{
    World world(u"from/elsewhere/, to/b->~/from/elsewhere"_s);
    world.answer({ Alert::Ok });
    world.steps.createAlias(world.request({ u"a"_s, u"b"_s, u"c"_s }));
    QCOMPARE(world.lastAlert().text, u"Create alias for 'b' failed!"_s);
    QCOMPARE(world.tree(),
             u"from/elsewhere/, to/a->~/from/a, to/b->~/from/elsewhere, to/c->~/from/c"_s);
}

QTEST_MAIN(tst_SingleSteps)
#include "tst_SingleSteps.moc"
