#include "tests/operations/OperationWorld.h"

#include <QTest>

class tst_CopyMove : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSheetComesUpForFoldersAndNeverForAMove();
    void anAnswerDecidesWhatIsReplaced_data();
    void anAnswerDecidesWhatIsReplaced();
    void aFailedReplacementKeepsTheOldItem_data();
    void aFailedReplacementKeepsTheOldItem();
    void aThingIsNeverReplacedByItselfOrItsPart_data();
    void aThingIsNeverReplacedByItselfOrItsPart();
    void cancelStopsBetweenItemsAndNotTheNextRun();
    void allAndALateCancelDoNotReachTheNextRun();
    void aSecondCancelEndsTheRunsThatWait();
    void attributesOfAFolderTreeAreCopied();
};

void tst_CopyMove::theSheetComesUpForFoldersAndNeverForAMove()
{
    const auto tells = [](Operation operation, const QString &item, QStringList program, int shown,
                          const QStringList &texts) {
        World world(u"from/a=0123456789, from/f/"_s);
        world.run(operation, { item });
        program << world.source + u'/' + item << world.destination + u'/' + item;
        QCOMPARE(world.programs.runs, QList<QStringList> { program });
        QCOMPARE(world.sheet.maximum, 1.0);
        QCOMPARE(world.sheet.closed, 1);
        QCOMPARE(world.sheet.shown, shown);
        QCOMPARE(world.sheet.texts, texts);
    };
    const QStringList cp { u"/bin/cp"_s, u"-R"_s, u"-p"_s };
    const QStringList mv { u"/bin/mv"_s, u"-f"_s };
    const QString copied = u"Copy progress finished."_s;
    tells(Operation::Copy, u"a"_s, cp, 0, { u"Copying 'a'"_s, copied });
    tells(Operation::Copy, u"f"_s, cp, 1, { u"Copying 'f'"_s, copied });
    tells(Operation::Move, u"f"_s, mv, 0, { u"Moving 'f'"_s, u"Move progress finished."_s });
}

void tst_CopyMove::anAnswerDecidesWhatIsReplaced_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<QList<Alert::Answer>>("answers");
    QTest::addColumn<QByteArray>("left"); // contents of a, b and c
    QTest::addColumn<QString>("trashed");
    QTest::addColumn<QList<double>>("counted");
    const auto row = [](const char *name, const QString &items, const QList<Alert::Answer> &answers,
                        const char *left, const QString &trashed, const QList<double> &counted) {
        QTest::newRow(name) << items << answers << QByteArray(left) << trashed << counted;
    };
    using enum Alert::Answer;
    row("all asks once", u"a b c"_s, { All }, "new new new", {}, { 1, 2, 3, 3 });
    row("each is asked for", u"a b"_s, { Yes, Yes }, "new new old", {}, { 1, 2, 2 });
    row("the one after No is copied unasked, and no further", u"a b c"_s, { No, Yes },
        "old new new", u"b"_s, { 1, 2, 3 });
    row("No for the last ends the run", u"a"_s, { No }, "old old old", {}, {});
    // As two names that a folder takes for one: the second would eat the first.
    row("what this run made stays", u"a a"_s, { All, Ok }, "new old old", {}, { 1, 2 });
    row("the parent aborts", u"a .. b"_s, { Yes, Ok }, "new old old", {}, { 1, 3 });
    row("the parent after No aborts", u"a .. b"_s, { No, Ok }, "old old old", {}, { 3 });
}

void tst_CopyMove::anAnswerDecidesWhatIsReplaced()
{
    QFETCH(QString, items);
    QFETCH(QList<Alert::Answer>, answers);
    World world(u"from/a=new, from/b=new, from/c=new, to/a=old, to/b=old, to/c=old"_s);
    world.answer(answers);
    world.run(Operation::Copy, items.split(u' '));
    QTEST(QByteArray(world.to(u"a"_s) + ' ' + world.to(u"b"_s) + ' ' + world.to(u"c"_s)), "left");
    QTEST(world.folder.names(u"trash"_s).join(u' '), "trashed");
    QCOMPARE(world.leftovers(), 0);
    QTEST(world.sheet.values, "counted");
    QCOMPARE(world.sheet.cancelled, int(world.sheet.values.isEmpty()));
    QCOMPARE(world.sheet.texts.isEmpty(), world.sheet.values.isEmpty());
}

void tst_CopyMove::aFailedReplacementKeepsTheOldItem_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("partial"); // what the program leaves
    QTest::addColumn<QString>("left");
    const QString files = u"from/a=new, to/a=old"_s;
    const QString folders = u"from/a/x=new, to/a/precious=old"_s;
    QTest::newRow("copy that made nothing") << Operation::Copy << files << QString() << files;
    QTest::newRow("copy of a part") << Operation::Copy << files << u"to/a=par"_s << files;
    QTest::newRow("move that made nothing") << Operation::Move << files << QString() << files;
    QTest::newRow("copy of a part of a folder")
        << Operation::Copy << folders << u"to/a/half=x"_s
        << u"from/a/x=new, to/a/half=x, trash/a/precious=old"_s;
}

void tst_CopyMove::aFailedReplacementKeepsTheOldItem()
{
    QFETCH(Operation, operation);
    QFETCH(QString, given);
    QFETCH(QString, partial);
    World world(given);
    world.programs.before = [&](const QStringList &) {
        makeTree(world.folder, partial);
        return 1;
    };
    world.answer({ Alert::Yes, Alert::Ok });
    world.run(operation, { u"a"_s });
    QTEST(world.tree(), "left");
    QCOMPARE(world.lastAlert().text,
             operation == Operation::Copy ? u"Copy progress of 'a' failed!"_s
                                          : u"Move progress of 'a' failed!"_s);
}

void tst_CopyMove::aThingIsNeverReplacedByItselfOrItsPart_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("destination");
    const auto row = [](const char *name, const QString &given, const QString &source = u"from"_s,
                        const QString &destination = u"to"_s) {
        QTest::newRow(name) << given << source << destination;
    };
    row("a hard link", u"from/a=only, to/a==from/a"_s);
    row("a link to the target", u"to/a=only, from/a->~/to/a"_s);
    row("into itself", u"from/a/deep/"_s, u"from"_s, u"from/a/deep"_s);
    row("over what holds it", u"to/a/a=only"_s, u"to/a"_s);
    row("the same folder by another name", u"from/a=only, alias->~/from"_s, u"from"_s, u"alias"_s);
    row("over a locked item", u"from/a=new, to/a=!old"_s);
}

void tst_CopyMove::aThingIsNeverReplacedByItselfOrItsPart()
{
    QFETCH(QString, given);
    QFETCH(QString, source);
    QFETCH(QString, destination);
    World world(given);
    world.source = world.folder.path(source);
    world.destination = world.folder.path(destination);
    for (const auto operation : { Operation::Copy, Operation::Move }) {
        world.answer({ Alert::Ok });
        world.run(operation, { u"a"_s });
    }
    QVERIFY(world.programs.runs.isEmpty());
    QCOMPARE(world.alerts.shown().size(), 2);
}

void tst_CopyMove::cancelStopsBetweenItemsAndNotTheNextRun()
{
    World world(u"from/a=x, from/b=x, from/c=x"_s);
    world.engine.cancelThread(); // nothing runs: it must not reach the run below
    world.programs.before = [&](const QStringList &) -> std::optional<int> {
        world.engine.cancelThread();
        return std::nullopt;
    };
    world.run(Operation::Copy, { u"a"_s, u"b"_s });
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"a"_s });
    world.programs.before = nullptr;
    world.run(Operation::Copy, { u"c"_s });
    QCOMPARE(world.to(u"c"_s), "x");
}

void tst_CopyMove::allAndALateCancelDoNotReachTheNextRun()
{
    World world(u"from/a=new, from/b=new, from/c=new, to/a=old, to/b=old, to/c=old"_s);
    world.sheet.onText = [&](const QString &text) {
        if (text == u"Copy progress finished."_s)
            world.engine.cancelThread();
    };
    world.answer({ Alert::All, Alert::Yes });
    world.start(Operation::Copy, { u"a"_s, u"b"_s });
    world.run(Operation::Move, { u"c"_s });
    QCOMPARE(world.lastAlert().text, u"Target 'c' already exists! Overwrite?"_s);
    QCOMPARE(world.sheet.texts,
             QStringList({ u"Copying 'a'"_s, u"Copying 'b'"_s, u"Copy progress finished."_s,
                           u"Moving 'c'"_s, u"Move progress finished."_s }));
    QCOMPARE(world.tree(), u"from/a=new, from/b=new, to/a=new, to/b=new, to/c=new"_s);
}

void tst_CopyMove::aSecondCancelEndsTheRunsThatWait()
{
    World world(u"from/a=new, from/b=new, from/c=new"_s);
    world.programs.before = [&](const QStringList &) -> std::optional<int> {
        world.engine.cancelThread();
        world.engine.cancelThread();
        return std::nullopt;
    };
    world.start(Operation::Copy, { u"a"_s });
    world.start(Operation::Copy, { u"b"_s });
    world.run(Operation::Copy, { u"c"_s });
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"a"_s });
}

void tst_CopyMove::attributesOfAFolderTreeAreCopied()
{
    World world(u"from/f/x=x"_s);
    world.folder.setAttribute(u"from/f/x"_s, "user.note", "kept");
    world.run(Operation::Copy, { u"f"_s });
    QCOMPARE(world.folder.attribute(u"to/f/x"_s, "user.note"), "kept");
}

QTEST_MAIN(tst_CopyMove)
#include "tst_CopyMove.moc"
