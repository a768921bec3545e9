#include "base/MainThread.h"
#include "tests/operations/OperationWorld.h"

#include "tests/support/Watched.h"

#include <QTest>

#include <cerrno>
#include <fcntl.h>

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
    void whatWaitsIsCancelledAloneOrAll_data();
    void whatWaitsIsCancelledAloneOrAll();
    void attributesOfAFolderTreeAreCopied();
};

void tst_CopyMove::theSheetComesUpForFoldersAndNeverForAMove()
{
    const auto tells = [](Operation operation, const QString &item, const QStringList &program,
                          int shown, const QStringList &texts) {
        World world(u"from/a=0123456789, from/f/"_s);
        world.run(operation, { item });
        const QStringList run = world.programs.runs.value(0);
        QCOMPARE(run.mid(0, run.size() - 1), // the last is a hidden name
                 program.isEmpty() ? program
                                   : program + QStringList { world.source + u'/' + item });
        QCOMPARE(world.folder.names(u"to"_s), QStringList { item });
        QCOMPARE(world.sheet.maximum, 1.0);
        QCOMPARE(world.sheet.closed, 1);
        QCOMPARE(world.sheet.shown, shown);
        QCOMPARE(world.sheet.texts, texts);
    };
    const QStringList cp { u"/bin/cp"_s, u"-R"_s, u"-p"_s };
    const QString copied = u"Copy progress finished."_s;
    tells(Operation::Copy, u"a"_s, {}, 0, { u"Copying 'a'"_s, copied });
    tells(Operation::Copy, u"f"_s, cp, 1, { u"Copying 'f'"_s, copied });
    tells(Operation::Move, u"f"_s, {}, 0, { u"Moving 'f'"_s, u"Move progress finished."_s });
}

void tst_CopyMove::anAnswerDecidesWhatIsReplaced_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<QList<Alert::Answer>>("answers");
    QTest::addColumn<QByteArray>("left"); // contents of a, b and c
    QTest::addColumn<QString>("trashed");
    QTest::addColumn<QList<double>>("counted"); // the first and the last value of the sheet
    const auto row = [](const char *name, const QString &items, const QList<Alert::Answer> &answers,
                        const char *left, const QString &trashed, const QList<double> &counted) {
        QTest::newRow(name) << items << answers << QByteArray(left) << trashed << counted;
    };
    using enum Alert::Answer;
    row("all asks once", u"a b c"_s, { All }, "new new new", {}, { 1, 3 });
    row("each is asked for", u"a b"_s, { Yes, Yes }, "new new old", {}, { 1, 2 });
    row("the one after No is copied unasked, and no further", u"a b c"_s, { No, Yes },
        "old new new", u"b"_s, { 1, 3 });
    row("No for the last ends the run", u"a"_s, { No }, "old old old", {}, {});
    // As two names that a folder takes for one: the second would eat the first.
    row("what this run made stays", u"a a"_s, { All, Ok }, "new old old", {}, { 1, 2 });
    row("the parent aborts", u"a .. b"_s, { Yes, Ok }, "new old old", {}, { 1, 3 });
    row("the parent after No aborts", u"a .. b"_s, { No, Ok }, "old old old", {}, { 3, 3 });
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
    // Those between may be left out while the sheet is hidden.
    const auto &values = world.sheet.values;
    QTEST(values.isEmpty() ? values : QList<double>({ values.first(), values.last() }), "counted");
    QCOMPARE(world.sheet.cancelled, int(world.sheet.values.isEmpty()));
    QCOMPARE(world.sheet.texts.isEmpty(), world.sheet.values.isEmpty());
}

void tst_CopyMove::aFailedReplacementKeepsTheOldItem_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("given");
    QTest::addColumn<Call>("call");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("why");
    const QString files = u"from/a=new, to/a=old"_s;
    const QString folders = u"from/a/x=new, to/a/precious=old"_s;
    using enum Operation;
    const auto row = [](const char *name, Operation operation, const QString &given, Call call,
                        int error, const QString &why) {
        QTest::newRow(name) << operation << given << call << error << why;
    };
    const QString full = u"No space left on device"_s;
    row("full disk", Copy, files, Call::CopyRange, ENOSPC, full);
    row("full disk at the attributes' place", Copy, files, Call::SetMode, ENOSPC, full);
    row("device that fails", Copy, files, Call::CopyRange, EIO, u"Input/output error"_s);
    row("no exchange for a copy", Copy, files, Call::Rename, EACCES, u"Permission denied"_s);
    row("no exchange for a folder", Copy, folders, Call::Rename, EACCES, u"Permission denied"_s);
    row("no exchange for a move", Move, files, Call::Rename, EACCES, u"Permission denied"_s);
    row("copy command that fails", Copy, folders, Call::Clone, 0, u"cp: it broke"_s);
    row("full disk of a move across", Move, files, Call::CopyRange, ENOSPC, full);
    row("folder that cannot be staged", Move, folders, Call::MakeFolder, EDQUOT,
        u"Disk quota exceeded"_s);
}

// The name keeps the whole old item, nothing is left beside it, and the person learns why.
void tst_CopyMove::aFailedReplacementKeepsTheOldItem()
{
    QFETCH(Operation, operation);
    QFETCH(QString, given);
    QFETCH(Call, call);
    QFETCH(int, error);
    World world(given);
    const bool across = operation == Operation::Move && call != Call::Rename;
    const Watched watched([&](Call made, const char *, unsigned flags) {
        if (across && made == Call::Rename && (flags & RENAME_EXCHANGE))
            return EXDEV;
        return made == call ? error : 0;
    });
    world.programs.before = [&](const QStringList &arguments) -> std::optional<int> {
        DesktopPrograms().run(arguments);
        return error == 0 ? std::optional(1) : std::nullopt;
    };
    world.programs.errorText = u"cp: it broke"_s;
    world.answer({ Alert::Yes, Alert::Ok });
    world.run(operation, { u"a"_s });
    QCOMPARE(world.tree(), given);
    QCOMPARE(world.lastAlert().text,
             operation == Operation::Copy ? u"Copy progress of 'a' failed!"_s
                                          : u"Move progress of 'a' failed!"_s);
    QFETCH(QString, why);
    QVERIFY2(world.lastAlert().details.endsWith(why), qPrintable(world.lastAlert().details));
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
    world.engine.queue().cancel(); // nothing runs: it must not reach the run below
    {
        const Watched watched([&](Call call, const char *, unsigned) {
            if (call == Call::CopyRange)
                world.engine.queue().cancel();
            return 0;
        });
        world.run(Operation::Copy, { u"a"_s, u"b"_s });
    }
    QCOMPARE(world.folder.names(u"to"_s), QStringList { u"a"_s });
    world.run(Operation::Copy, { u"c"_s });
    QCOMPARE(world.to(u"c"_s), "x");
}

void tst_CopyMove::allAndALateCancelDoNotReachTheNextRun()
{
    World world(u"from/a=new, from/b=new, from/c=new, to/a=old, to/b=old, to/c=old"_s);
    world.sheet.onText = [&](const QString &text) {
        if (text == u"Copy progress finished."_s)
            world.engine.queue().cancel();
    };
    world.answer({ Alert::All, Alert::Yes });
    world.start(Operation::Copy, { u"a"_s, u"b"_s });
    world.run(Operation::Move, { u"c"_s });
    QCOMPARE(world.lastAlert().text, u"Target 'c' already exists! Overwrite?"_s);
    world.sheet.texts.removeAll(u"Copying 'b'"_s); // may be left out while the sheet is hidden
    QCOMPARE(world.sheet.texts,
             QStringList({ u"Copying 'a'"_s, u"Copy progress finished."_s, u"Moving 'c'"_s,
                           u"Move progress finished."_s }));
    QCOMPARE(world.tree(), u"from/a=new, from/b=new, to/a=new, to/b=new, to/c=new"_s);
}

void tst_CopyMove::whatWaitsIsCancelledAloneOrAll_data()
{
    QTest::addColumn<QList<int>>("cancels"); // by place in the queue; -1: all that wait
    QTest::addColumn<QStringList>("copied");
    QTest::newRow("the sheet's button, twice")
        << QList<int> { 0, 0 } << QStringList { u"a"_s, u"c"_s, u"d"_s, u"e"_s };
    QTest::newRow("one that waits")
        << QList<int> { 2 } << QStringList { u"a"_s, u"b"_s, u"c"_s, u"e"_s };
    QTest::newRow("all that wait") << QList<int> { -1 } << QStringList { u"a"_s, u"b"_s };
}

void tst_CopyMove::whatWaitsIsCancelledAloneOrAll()
{
    QFETCH(QList<int>, cancels);
    QFETCH(QStringList, copied);
    World world(u"from/a=x, from/b=x, from/c=x, from/d=x, from/e=x"_s);
    RunQueue &queue = world.engine.queue();
    QStringList shown;
    queue.setChangeHandler([&] { // any thread
        onMainThread([&] {
            shown.clear();
            for (const ShownRun &run : queue.runs())
                shown.append(run.text);
        });
    });
    bool once = false;
    world.sheet.onText = [&](const QString &) {
        if (std::exchange(once, true))
            return;
        QCOMPARE(shown, QStringList({ u"a, b"_s, u"c"_s, u"d"_s, u"e"_s }));
        const QList<ShownRun> runs = queue.runs();
        for (const int place : cancels) {
            if (place < 0)
                queue.cancelWaiting();
            else if (place == 0)
                queue.cancel();
            else
                queue.cancel(runs[place].ticket);
        }
    };
    world.start(Operation::Copy, { u"a"_s, u"b"_s });
    world.start(Operation::Copy, { u"c"_s });
    world.start(Operation::Copy, { u"d"_s });
    world.run(Operation::Copy, { u"e"_s });
    QVERIFY(once);
    QCOMPARE(world.folder.names(u"to"_s), copied);
    QCOMPARE(shown, QStringList());
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
