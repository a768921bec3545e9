#include "tests/operations/OperationWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CopyMove : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aShortCopyShowsNoSheetButSetsItsTexts();
    void aFolderBringsUpTheSheetAndAMoveNever();
    void allAsksOnceAndOnlyInItsRun();
    void afterNoTheNextItemIsCopiedUnaskedAndTheOldOneKept();
    void noForTheLastItemEndsTheRun();
    void aFailedReplacementBringsTheOldItemBack_data();
    void aFailedReplacementBringsTheOldItemBack();
    void aPartialFolderStaysAndTheOldOneGoesToTheTrash();
    void aThingIsNeverReplacedByItselfOrItsPart_data();
    void aThingIsNeverReplacedByItselfOrItsPart();
    void cancelStopsBetweenItemsAndNotTheNextRun();
    void theParentNameAbortsTheRun();
    void attributesOfAFolderTreeAreCopied();
};

void tst_CopyMove::aShortCopyShowsNoSheetButSetsItsTexts()
{
    World world;
    world.folder.write(u"from/a"_s, "0123456789");
    world.run(Operation::Copy, { u"a"_s });
    QCOMPARE(world.sheet.shown, 0);
    QCOMPARE(world.sheet.texts, QStringList({ u"Copying 'a'"_s, u"Copy progress finished."_s }));
    QCOMPARE(world.sheet.maximum, 1.0);
    QCOMPARE(world.sheet.closed, 1);
    QCOMPARE(world.programs.runs.first(),
             QStringList({ u"/bin/cp"_s, u"-R"_s, u"-p"_s, world.source + u"/a"_s,
                           world.destination + u"/a"_s }));
}

void tst_CopyMove::aFolderBringsUpTheSheetAndAMoveNever()
{
    World world;
    world.folder.makeFolder(u"from/f"_s);
    world.run(Operation::Copy, { u"f"_s });
    QCOMPARE(world.sheet.shown, 1);
    world.folder.makeFolder(u"from/g"_s);
    world.run(Operation::Move, { u"g"_s });
    QCOMPARE(world.sheet.shown, 1);
    QCOMPARE(world.programs.runs.last().mid(0, 2), QStringList({ u"/bin/mv"_s, u"-f"_s }));
}

void tst_CopyMove::allAsksOnceAndOnlyInItsRun()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s }) {
        world.folder.write(u"from/"_s + name, "new");
        world.folder.write(u"to/"_s + name, "old");
    }
    world.alerts.answer(Alert::All);
    world.run(Operation::Copy, { u"a"_s, u"b"_s });
    QCOMPARE(world.to(u"b"_s), "new");
    QCOMPARE(world.leftovers(), 0);

    world.alerts.answer(Alert::No);
    world.run(Operation::Copy, { u"a"_s });
    QCOMPARE(world.alerts.shown().size(), 2);
}

void tst_CopyMove::afterNoTheNextItemIsCopiedUnaskedAndTheOldOneKept()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s }) {
        world.folder.write(u"from/"_s + name, "new " + name.toUtf8());
        world.folder.write(u"to/"_s + name, "old " + name.toUtf8());
    }
    world.alerts.answer(Alert::No);
    world.run(Operation::Copy, { u"a"_s, u"b"_s });
    QCOMPARE(world.to(u"a"_s), "old a");
    QCOMPARE(world.to(u"b"_s), "new b");
    QVERIFY(world.inTrash(u"b"_s));
    QCOMPARE(world.sheet.values.first(), 1.0);
}

void tst_CopyMove::noForTheLastItemEndsTheRun()
{
    World world;
    world.folder.write(u"from/a"_s, "new");
    world.folder.write(u"to/a"_s, "old");
    world.alerts.answer(Alert::No);
    world.run(Operation::Copy, { u"a"_s });
    QCOMPARE(world.to(u"a"_s), "old");
    QCOMPARE(world.sheet.cancelled, 1);
    QVERIFY(world.sheet.texts.isEmpty());
}

void tst_CopyMove::aFailedReplacementBringsTheOldItemBack_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("partial");
    QTest::newRow("copy that made nothing") << Operation::Copy << QByteArray();
    QTest::newRow("copy that left a partial") << Operation::Copy << QByteArray("par");
    QTest::newRow("move that made nothing") << Operation::Move << QByteArray();
}

void tst_CopyMove::aFailedReplacementBringsTheOldItemBack()
{
    QFETCH(Operation, operation);
    QFETCH(QByteArray, partial);
    World world;
    world.folder.write(u"from/a"_s, "new");
    world.folder.write(u"to/a"_s, "old");
    world.programs.before = [&](const QStringList &) {
        if (!partial.isEmpty())
            world.folder.write(u"to/a"_s, partial);
        return 1;
    };
    world.alerts.answer(Alert::Yes);
    world.alerts.answer(Alert::Ok);
    world.run(operation, { u"a"_s });
    QCOMPARE(world.to(u"a"_s), "old");
    QCOMPARE(world.from(u"a"_s), "new");
    QCOMPARE(world.leftovers(), 0);
    QCOMPARE(world.alerts.shown().last().text,
             operation == Operation::Copy ? u"Copy progress of 'a' failed!"_s
                                          : u"Move progress of 'a' failed!"_s);
}

void tst_CopyMove::aPartialFolderStaysAndTheOldOneGoesToTheTrash()
{
    World world;
    world.folder.makeFolder(u"from/f"_s);
    world.folder.makeFolder(u"to/f"_s);
    world.folder.write(u"to/f/precious"_s, "old");
    world.programs.before = [&](const QStringList &) {
        world.folder.makeFolder(u"to/f"_s);
        world.folder.write(u"to/f/half"_s, "x");
        return 1;
    };
    world.alerts.answer(Alert::Yes);
    world.alerts.answer(Alert::Ok);
    world.run(Operation::Copy, { u"f"_s });
    QCOMPARE(world.to(u"f/half"_s), "x");
    QCOMPARE(world.folder.read(u"trash/f/precious"_s), "old");
    QCOMPARE(world.leftovers(), 0);
}

void tst_CopyMove::aThingIsNeverReplacedByItselfOrItsPart_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a hard link") << u"hard link"_s;
    QTest::newRow("a link to the target") << u"link"_s;
    QTest::newRow("into itself") << u"inside"_s;
    QTest::newRow("over what holds it") << u"around"_s;
    QTest::newRow("the same folder by another name") << u"same folder"_s;
}

void tst_CopyMove::aThingIsNeverReplacedByItselfOrItsPart()
{
    QFETCH(QString, kind);
    World world;
    QString name = u"a"_s;
    if (kind == u"hard link"_s) {
        world.folder.write(u"from/a"_s, "only");
        world.folder.hardLink(u"from/a"_s, u"to/a"_s);
    } else if (kind == u"link"_s) {
        world.folder.write(u"to/a"_s, "only");
        world.folder.link(world.destination + u"/a"_s, u"from/a"_s);
    } else if (kind == u"inside"_s) {
        world.folder.makeFolder(u"from/a"_s);
        world.folder.makeFolder(u"from/a/deep"_s);
        world.destination = world.source + u"/a/deep"_s;
    } else if (kind == u"around"_s) {
        world.folder.makeFolder(u"to/a"_s);
        world.folder.write(u"to/a/a"_s, "only");
        world.source = world.destination + u"/a"_s;
    } else {
        world.folder.write(u"from/a"_s, "only");
        world.folder.link(world.source, u"alias"_s);
        world.destination = world.folder.path() + u"/alias"_s;
    }
    for (const auto operation : { Operation::Copy, Operation::Move }) {
        world.alerts.answer(Alert::Ok);
        world.run(operation, { name });
    }
    QVERIFY(world.programs.runs.isEmpty());
    QCOMPARE(world.alerts.shown().size(), 2);
}

void tst_CopyMove::cancelStopsBetweenItemsAndNotTheNextRun()
{
    World world;
    for (const QString &name : { u"a"_s, u"b"_s, u"c"_s })
        world.folder.write(u"from/"_s + name, "x");
    world.engine.cancelThread(); // nothing runs: it must not reach the run below
    world.programs.before = [&](const QStringList &) -> std::optional<int> {
        world.engine.cancelThread();
        return std::nullopt;
    };
    world.run(Operation::Copy, { u"a"_s, u"b"_s });
    QCOMPARE(world.to(u"a"_s), "x");
    QVERIFY(!exists(world.destination + u"/b"_s));

    world.programs.before = nullptr;
    world.run(Operation::Copy, { u"c"_s });
    QCOMPARE(world.to(u"c"_s), "x");
}

void tst_CopyMove::theParentNameAbortsTheRun()
{
    World world;
    world.folder.write(u"from/a"_s, "x");
    world.folder.write(u"from/b"_s, "x");
    world.alerts.answer(Alert::Ok);
    world.run(Operation::Copy, { u"a"_s, u".."_s, u"b"_s });
    QCOMPARE(world.to(u"a"_s), "x");
    QVERIFY(!exists(world.destination + u"/b"_s));
    QCOMPARE(world.sheet.texts.last(), u"Copy progress finished."_s);
}

void tst_CopyMove::attributesOfAFolderTreeAreCopied()
{
    World world;
    world.folder.makeFolder(u"from/f"_s);
    world.folder.write(u"from/f/x"_s, "x");
    if (!world.folder.setAttribute(u"from/f/x"_s, "user.note", "kept"))
        QSKIP("no extended attributes here");
    world.run(Operation::Copy, { u"f"_s });
    QCOMPARE(world.folder.attribute(u"to/f/x"_s, "user.note"), "kept");
}

QTEST_MAIN(tst_CopyMove)
#include "tst_CopyMove.moc"
