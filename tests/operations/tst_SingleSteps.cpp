#include "operations/SingleSteps.h"

#include "operations/CopyMove.h"
#include "platform/FileKinds.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/DateText.h"
#include "util/FileQueries.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct World {
    TestFolder folder;
    AlertScript alerts;
    RecordedPrograms programs;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    UserDefaults defaults { folder.path() + u"/settings.plist"_s };
    DateText dates { defaults };
    CopyMove engine { alerts, programs, workspace, queries, dates };
    SingleSteps steps { alerts, programs, workspace, engine };
    OperationRecord record;

    World()
    {
        folder.makeFolder(u"trash"_s);
        workspace.trashFolder = path(u"trash"_s);
    }
    QString path(const QString &name) const { return folder.path() + u'/' + name; }
    AcceptedRequest request(const QString &source, const QString &destination,
                            const QStringList &items) const
    {
        return { source, destination, items, Side::Left, UpdateBoth::No };
    }
};

} // namespace

class tst_SingleSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void renameRefusesWhatWouldMoveOrReplace_data();
    void renameRefusesWhatWouldMoveOrReplace();
    void renameTellsTheNewPath();
    void aSetGoesToTheTrashWithOneAlertAtMost();
    void aliasesGoOnAfterOneThatFails();
    void duplicatingOverAFileKeepsItInTheTrash();
    void duplicatingIntoAFolderReplacesNothingThere();
};

void tst_SingleSteps::renameRefusesWhatWouldMoveOrReplace_data()
{
    QTest::addColumn<QString>("newName");
    QTest::newRow("an existing name") << u"taken"_s;
    QTest::newRow("a path") << u"trash/x"_s;
    QTest::newRow("a dot") << u"."_s;
    QTest::newRow("two dots") << u".."_s;
    QTest::newRow("too long") << QString(256, u'n');
}

void tst_SingleSteps::renameRefusesWhatWouldMoveOrReplace()
{
    QFETCH(QString, newName);
    World world;
    world.folder.write(u"a"_s, "a");
    world.folder.write(u"taken"_s, "taken");
    world.alerts.answer(Alert::Ok);
    world.steps.renameItem(world.request(world.path(u"a"_s), world.path(newName), {}),
                           world.record);
    QCOMPARE(world.alerts.shown().last().text, u"Rename failed!"_s);
    QCOMPARE(world.folder.read(u"a"_s), "a");
    QCOMPARE(world.folder.read(u"taken"_s), "taken");
}

void tst_SingleSteps::renameTellsTheNewPath()
{
    World world;
    world.folder.write(u"a"_s, "a");
    world.steps.renameItem(world.request(world.path(u"a"_s), world.path(u"A"_s), {}), world.record);
    QCOMPARE(world.folder.read(u"A"_s), "a");
    QCOMPARE(world.record.item, world.path(u"A"_s));
}

void tst_SingleSteps::aSetGoesToTheTrashWithOneAlertAtMost()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s })
        world.folder.write(name, "x");
    world.steps.deleteItems(world.request(world.folder.path(), {}, { u"a"_s }));
    QVERIFY(exists(world.path(u"trash/a"_s)));
    world.workspace.trashWorks = false;
    world.alerts.answer(Alert::Ok);
    world.steps.deleteItems(world.request(world.folder.path(), {}, { u"b"_s, u"gone"_s }));
    QCOMPARE(world.alerts.shown().last().text, u"Delete failed!"_s);
    QVERIFY(exists(world.path(u"b"_s)));
}

void tst_SingleSteps::aliasesGoOnAfterOneThatFails()
{
    World world;
    world.folder.makeFolder(u"from"_s);
    world.folder.makeFolder(u"to"_s);
    world.folder.makeFolder(u"elsewhere"_s);
    world.folder.link(world.path(u"elsewhere"_s), u"to/b"_s);
    world.alerts.answer(Alert::Ok);
    world.steps.createAlias(
        world.request(world.path(u"from"_s), world.path(u"to"_s), { u"a"_s, u"b"_s, u"c"_s }));
    QCOMPARE(world.alerts.shown().last().text, u"Create alias for 'b' failed!"_s);
    QCOMPARE(linkTarget(world.path(u"to/a"_s)), world.path(u"from/a"_s));
    QCOMPARE(linkTarget(world.path(u"to/c"_s)), world.path(u"from/c"_s));
    QVERIFY(!exists(world.path(u"elsewhere/b"_s)));
}

void tst_SingleSteps::duplicatingOverAFileKeepsItInTheTrash()
{
    World world;
    world.folder.write(u"a"_s, "new");
    world.folder.write(u"a Copy"_s, "old");
    world.steps.duplicateItem(world.path(u"a"_s), world.path(u"a Copy"_s));
    QCOMPARE(world.folder.read(u"a Copy"_s), "new");
    QCOMPARE(world.folder.read(u"trash/a Copy"_s), "old");
}

void tst_SingleSteps::duplicatingIntoAFolderReplacesNothingThere()
{
    World world;
    world.folder.makeFolder(u"f"_s);
    world.folder.write(u"f/x"_s, "new");
    world.folder.makeFolder(u"f Copy"_s);
    world.folder.makeFolder(u"f Copy/f"_s);
    world.folder.write(u"f Copy/f/x"_s, "old");
    world.steps.duplicateItem(world.path(u"f"_s), world.path(u"f Copy"_s));
    QCOMPARE(world.folder.read(u"f Copy/f/x"_s), "new");
    QCOMPARE(world.folder.read(u"trash/f/x"_s), "old");
}

QTEST_MAIN(tst_SingleSteps)
#include "tst_SingleSteps.moc"
