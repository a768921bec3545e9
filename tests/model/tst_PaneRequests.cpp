#include "platform/FileName.h"
#include "tests/model/PaneModelWorld.h"

#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QList<Message<ItemRequest>> ItemCommands { CopyItem, MoveItem, DeleteItem, RenameItem,
                                                 ShowInfo };

void addItemCommands()
{
    QTest::addColumn<int>("command");
    for (qsizetype i = 0; i < ItemCommands.size(); ++i)
        QTest::newRow(ItemCommands[i].name) << int(i);
}

OperationRequest expected(const QString &source, const QString &destination,
                          const QStringList &items, const QString &updateBoth)
{
    return { { u"Side"_s, u"Left"_s },
             { u"Source"_s, source },
             { u"Destination"_s, destination },
             { u"Items"_s, items },
             { u"UpdateBoth"_s, updateBoth } };
}

} // namespace

class tst_PaneRequests : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requests_data();
    void requests();
    void renameToNothingNewDoesNothing_data();
    void renameToNothingNewDoesNothing();
    void newFolderNeedsAName();
    void withoutAnActivePaneARequestNamesNoSide();
    void bothPanesAreRefreshedWhenTheyShowOnePath();
    void copyIntoTheSameFolderIsRefusedFirst_data();
    void copyIntoTheSameFolderIsRefusedFirst();
    void parentRowIsRefused_data();
    void parentRowIsRefused();
    void rowsThatAreGoneAreDropped_data();
    void rowsThatAreGoneAreDropped();
    void rowsAreFoundAgainByPath();
    void parentRowAndItsFolderAreNotMixedUp();
    void confirmationDecides_data();
    void confirmationDecides();
    void confirmationIsAskedForUnlessTurnedOff();
};

void tst_PaneRequests::requests_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QString>("destination");
    QTest::newRow("copy") << 0 << u"copy"_s << QStringList({ u"sub"_s, u"b"_s }) << u"right"_s;
    QTest::newRow("move") << 1 << u"move"_s << QStringList({ u"sub"_s, u"b"_s }) << u"right"_s;
    QTest::newRow("delete") << 2 << u"delete"_s << QStringList({ u"sub"_s, u"b"_s }) << QString();
    QTest::newRow("rename") << 3 << u"rename"_s << QStringList { u"b"_s } << u"left/new"_s;
    QTest::newRow("information") << 4 << QString() << QStringList { u"b"_s } << QString();
}

void tst_PaneRequests::requests()
{
    QFETCH(const int, command);
    QFETCH(const QString, verb);
    QFETCH(const QStringList, items);
    QFETCH(const QString, destination);
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.window.typed = u"new"_s;
    RowSet rows;
    for (const QString &item : items)
        rows.append(world.row(item));
    world.bus.post(ItemCommands[command], world.request(rows));
    const bool renames = verb == u"rename"_s;
    const QString left = world.folder.path(u"left"_s);
    const auto request =
        expected(renames ? left + u"/b"_s : left,
                 destination.isEmpty() ? u""_s : world.folder.path(destination),
                 renames ? QStringList() : items, command < 2 ? u"YES"_s : u"NO"_s);
    QCOMPARE(verb.isEmpty() ? world.information.requests : world.desk.requests,
             QList<OperationRequest> { request });
    QCOMPARE(world.desk.verbs.join(u' '), verb);
    QCOMPARE(world.window.spinners, command < 2 ? 1 : 0);
    if (renames)
        QCOMPARE(world.window.prompts, QStringList(u"Please enter new name:|b"_s));
}

void tst_PaneRequests::renameToNothingNewDoesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("same name") << u"b"_s;
    QTest::newRow("no name") << QString();
}

void tst_PaneRequests::renameToNothingNewDoesNothing()
{
    QFETCH(const QString, typed);
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.window.typed = typed;
    world.bus.post(RenameItem, world.request(u"b"_s));
    QCOMPARE(world.window.prompts.size(), 1);
    QVERIFY(world.desk.verbs.isEmpty());
}

void tst_PaneRequests::newFolderNeedsAName()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.bus.post(NewFolder, { .side = Side::Left });
    QVERIFY(world.desk.verbs.isEmpty());
    world.window.typed = u"new"_s;
    world.bus.post(NewFolder, { .side = Side::Left });
    QCOMPARE(world.desk.verbs, QStringList(u"new folder"_s));
    QCOMPARE(world.desk.requests[0],
             expected(world.folder.path(u"left"_s), u""_s, { u"new"_s }, u"NO"_s));
    QCOMPARE(world.window.prompts.last(), u"Please input new folder name:|"_s);
}

// The operations refuse such a request; a guessed side would act on a pane nobody chose.
void tst_PaneRequests::withoutAnActivePaneARequestNamesNoSide()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.window.typed = u"new"_s;
    world.bus.post(NewFolder, {});
    world.showEverywhere(world.folder.path(u"left"_s));
    world.bus.post(DeleteItem, { .item = { 1 }, .seen = world.model.rowsRight() });
    QCOMPARE(world.desk.requests.size(), 2);
    for (const OperationRequest &request : world.desk.requests)
        QVERIFY(!request.contains(RequestKey::Side));
}

void tst_PaneRequests::bothPanesAreRefreshedWhenTheyShowOnePath()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.showEverywhere(world.folder.path(u"left"_s));
    world.window.typed = u"new"_s;
    world.bus.post(DeleteItem, world.request(u"b"_s));
    world.bus.post(RenameItem, world.request(u"b"_s));
    world.bus.post(NewFolder, { .side = Side::Left });
    QCOMPARE(world.desk.requests.size(), 3);
    for (const OperationRequest &request : world.desk.requests)
        QCOMPARE(request.value(RequestKey::UpdateBoth), u"YES"_s);
}

void tst_PaneRequests::copyIntoTheSameFolderIsRefusedFirst_data()
{
    QTest::addColumn<bool>("moves");
    QTest::addColumn<QString>("other"); // what the right pane shows
    QTest::addColumn<QString>("text");
    QTest::newRow("copy") << false << u"left"_s << u"Item(s) cannot copied in itself!"_s;
    QTest::newRow("move") << true << u"left"_s << u"Item(s) cannot moved in itself!"_s;
    QTest::newRow("by another name")
        << true << u"same as left"_s << u"Item(s) cannot moved in itself!"_s;
}

void tst_PaneRequests::copyIntoTheSameFolderIsRefusedFirst()
{
    QFETCH(const bool, moves);
    QFETCH(const QString, other);
    PaneModelWorld world(true);
    world.folder.link(u"left"_s, u"same as left"_s);
    world.model.awakeFromNib();
    world.bus.post(DirectoryChanged.right, { .path = world.folder.path(other) });
    world.alerts.answer(Alert::Ok);
    world.bus.post(moves ? MoveItem : CopyItem, world.request(u"b"_s));
    const Alert alert = world.alerts.shown().value(0);
    QTEST(alert.text, "text");
    QCOMPARE(alert.title, u"Twinleaf - Error"_s);
    QCOMPARE(alert.buttons.value(0).text, u"Ok"_s);
    QVERIFY(world.desk.verbs.isEmpty());
    QCOMPARE(world.window.spinners, 0);
}

void tst_PaneRequests::parentRowIsRefused_data()
{
    addItemCommands();
}

void tst_PaneRequests::parentRowIsRefused()
{
    QFETCH(const int, command);
    PaneModelWorld world(true);
    world.model.awakeFromNib();
    world.window.typed = u"new"_s;
    const auto refused = [&](const RowSet &rows) {
        if (command < 3)
            world.alerts.answer(Alert::Ok);
        world.bus.post(ItemCommands[command], world.request(rows));
        if (command < 3)
            QCOMPARE(world.alerts.shown().last().text,
                     u"The previous folder ('..') cannot be worked on with! Operation will be "
                     u"aborted!"_s);
        QVERIFY(world.desk.verbs.isEmpty());
        QVERIFY(world.information.requests.isEmpty());
        QVERIFY(world.window.prompts.isEmpty());
    };
    refused({ 0 });
    refused({ 0, world.row(u"b"_s) });
}

void tst_PaneRequests::rowsThatAreGoneAreDropped_data()
{
    addItemCommands();
}

void tst_PaneRequests::rowsThatAreGoneAreDropped()
{
    QFETCH(const int, command);
    PaneModelWorld world(true);
    world.model.awakeFromNib();
    const ItemRequest seen = world.request(u"b"_s);
    const int last = int(world.model.rowsLeft().size());
    for (const RowSet &rows : { RowSet {}, RowSet { -1 }, RowSet { last } })
        world.bus.post(ItemCommands[command], world.request(rows));
    world.bus.post(ItemCommands[command], { .side = Side::Left, .item = { last - 1 } });
    unlink(FileName::toBytes(world.folder.path(u"left/b"_s)));
    world.bus.post(DirectoryChanged.left, { .path = world.shown() });
    world.bus.post(ItemCommands[command], seen);
    QVERIFY(world.desk.verbs.isEmpty());
    QVERIFY(world.information.requests.isEmpty());
    QVERIFY(world.window.prompts.isEmpty());
    QVERIFY(world.alerts.shown().isEmpty());
}

void tst_PaneRequests::rowsAreFoundAgainByPath()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    const ItemRequest seen = world.request(RowSet { world.row(u"a"_s), world.row(u"c"_s) });
    world.folder.makeFolder(u"left/0 new"_s);
    world.model.sortRowEntries(Column::Name, Side::Left, SortDirection::Descending);
    world.bus.post(DirectoryChanged.left, { .path = world.shown() });
    world.bus.post(CopyItem, seen);
    // In the order in which the pane shows them now.
    QCOMPARE(world.desk.requests.value(0).value(RequestKey::Items),
             QStringList({ u"c"_s, u"a"_s }));
    world.bus.post(OpenFileWithApplication, { u"/app"_s, seen.item, Side::Left, seen.seen });
    QCOMPARE(world.workspace.calls.value(1),
             QStringList({ u"open"_s, world.folder.path(u"left/a"_s), u"/app"_s }));
}

// ".." has the path of the folder it is listed in, which one level up is an item's path.
void tst_PaneRequests::parentRowAndItsFolderAreNotMixedUp()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    const ItemRequest onParent = world.request(RowSet { 0 });
    world.open(u".."_s);
    const ItemRequest onFolder = world.request(u"left"_s);
    world.bus.post(DeleteItem, onParent);
    world.open(u"left"_s);
    world.bus.post(DeleteItem, onFolder);
    QVERIFY(world.desk.verbs.isEmpty());
    world.bus.post(GetRows.left, { onParent.item, onParent.seen });
    QCOMPARE(world.shown(), world.folder.path());
}

void tst_PaneRequests::confirmationDecides_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("text");
    QTest::newRow("copy") << 0 << u"Are you sure that you want to copy the item(s)?"_s;
    QTest::newRow("move") << 1 << u"Are you sure that you want to move the item(s)?"_s;
    QTest::newRow("delete")
        << 2 << u"Are you sure that you want to move the selected 2 item(s) to trash?"_s;
}

void tst_PaneRequests::confirmationDecides()
{
    QFETCH(const int, command);
    PaneModelWorld world(true);
    world.model.awakeFromNib();
    const ItemRequest request = world.request(RowSet { world.row(u"a"_s), world.row(u"b"_s) });
    world.alerts.answer(Alert::No);
    world.bus.post(ItemCommands[command], request);
    QVERIFY(world.desk.verbs.isEmpty());
    QCOMPARE(world.window.spinners, 0);
    QTEST(world.alerts.shown().value(0).text, "text");

    // What is listed anew under the question does not change what was asked about.
    world.alerts.decide = [&](const Alert &) {
        world.bus.post(DirectoryChanged.left, { .path = world.folder.path() });
        return Alert::Yes;
    };
    world.bus.post(ItemCommands[command], request);
    QCOMPARE(world.desk.requests.value(0).value(RequestKey::Items),
             QStringList({ u"a"_s, u"b"_s }));
    QCOMPARE(world.desk.requests.value(0).value(RequestKey::Source), world.folder.path(u"left"_s));
}

void tst_PaneRequests::confirmationIsAskedForUnlessTurnedOff()
{
    PaneModelWorld world;
    world.defaults.remove(Settings::ConfirmationForFileOperations);
    world.model.awakeFromNib();
    world.alerts.answer(Alert::No);
    world.bus.post(DeleteItem, world.request(u"b"_s));
    QVERIFY(world.desk.verbs.isEmpty());
}

QTEST_MAIN(tst_PaneRequests)
#include "tst_PaneRequests.moc"
