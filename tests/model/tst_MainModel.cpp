#include "model/MainModel.h"

#include "model/ItemInformation.h"
#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SettingsKeys.h"

#include <QTest>

#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct RecordedInformation final : ItemInformation {
    void showInfoSheet(const OperationRequest &request) override { requests.append(request); }
    QList<OperationRequest> requests;
};

// The pane model over real folders, in a window without widgets whose path controls follow it.
// Left shows "left", right shows "right".
struct World {
    explicit World(bool confirms = false)
    {
        folder.makeFolder(u"left/sub/deep"_s);
        folder.makeFolder(u"left/Program.app/Contents"_s);
        folder.makeFolder(u"left/Setup.pkg"_s);
        folder.makeFolder(u"right"_s);
        folder.write(u"left/a"_s, "a");
        folder.write(u"left/b"_s, "b");
        folder.write(u"left/c"_s, "c");
        folder.link(u"sub"_s, u"left/to sub"_s);
        defaults.setValue(Settings::ConfirmationForFileOperations, confirms);
        for (const auto key :
             { Settings::LeftFileListSortingDirection, Settings::RightFileListSortingDirection })
            defaults.setValue(key, true);
        defaults.setValue(Settings::LeftFileListLastPath, folder.path(u"left"_s));
        defaults.setValue(Settings::RightFileListLastPath, folder.path(u"right"_s));
        model.setWindowController(&window);
        model.setTwinleaf(&desk);
        model.setInfoSheetController(&information);
        QObject::connect(&model, &MainModel::rowsChanged, &model, [this](Side side) {
            window.tables[side].rows = int(model.rows(side).size());
        });
        bus.subscribe(DirectoryChanged, this, &World::follow);
        bus.subscribe(TableViewSelectionDidChange, this, &World::noteRefresh);
    }

    void follow(Side side, const FolderChange &change)
    {
        changes.append(change);
        window.paths[side] = change.path;
    }
    void noteRefresh(const PaneOfMessage &pane) { refreshed.append(pane.side); }

    int row(const QString &name) const { return int(model.rowsLeft().rowOfName(name)); }
    QStringList names(Side side = Side::Left) const
    {
        QStringList names;
        for (qsizetype row = 0; row < model.rows(side).size(); ++row)
            names.append(model.rows(side)[row].name());
        return names;
    }
    QString shown(Side side = Side::Left) const { return model.rows(side).folder(); }
    void open(const RowSet &rows) { bus.post(GetRows.left, { rows, model.rowsLeft() }); }
    void open(const QString &name) { open(RowSet { row(name) }); }
    ItemRequest request(const RowSet &rows) const
    {
        return { .side = Side::Left, .item = rows, .seen = model.rowsLeft() };
    }
    ItemRequest request(const QString &name) const { return request(RowSet { row(name) }); }
    void showEverywhere(const QString &path)
    {
        for (const Side side : { Side::Left, Side::Right })
            bus.post(DirectoryChanged[side], { .path = path });
    }

    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    RecordedDesk desk;
    RecordedInformation information;
    QList<FolderChange> changes;
    QList<Side> refreshed;
};

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

class tst_MainModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startSortsByWhatIsStored_data();
    void startSortsByWhatIsStored();
    void startFoldersTakeThePlaceOfTheStored();
    void startWithoutAnythingStoredListsTheHomeFolder();
    void hiddenFilesTitle_data();
    void hiddenFilesTitle();
    void reloadSortsByTheLastDirectionOfEitherPane();
    void rememberedRowIsKeptOrForgotten_data();
    void rememberedRowIsKeptOrForgotten();
    void rememberedRowBeyondTheEndSelectsNothing();
    void rememberedRowsSurviveTheSettings();
    void openingARow_data();
    void openingARow();
    void openingSeveralRowsEntersNone();
    void goingUpSelectsTheFolderLeft();
    void goingUpStaysAtTheRoot();
    void packagesAreEnteredInsideABundle_data();
    void packagesAreEnteredInsideABundle();
    void goForwardFollowsThePath_data();
    void goForwardFollowsThePath();
    void requests_data();
    void requests();
    void renameToNothingNewDoesNothing_data();
    void renameToNothingNewDoesNothing();
    void newFolderNeedsAName();
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
    void rowCountIsAnswered();
    void anEndedWorkerStopsTheIndicator();
};

void tst_MainModel::startSortsByWhatIsStored_data()
{
    QTest::addColumn<QVariant>("column");
    QTest::addColumn<QVariant>("direction");
    QTest::addColumn<Column>("sortedBy");
    QTest::addColumn<SortDirection>("towards");
    const QVariant none;
    constexpr auto Up = SortDirection::Ascending;
    constexpr auto Down = SortDirection::Descending;
    QTest::newRow("first start") << none << none << Column::Name << Down;
    QTest::newRow("column alone") << QVariant(u"Size"_s) << none << Column::Size << Down;
    QTest::newRow("direction alone") << none << QVariant(true) << Column::Name << Up;
    QTest::newRow("both") << QVariant(u"Date"_s) << QVariant(true) << Column::Date << Up;
    QTest::newRow("no such column") << QVariant(u"size"_s) << none << Column::Name << Down;
    QTest::newRow("icons") << QVariant(u"Icon"_s) << QVariant(true) << Column::Name << Up;
}

void tst_MainModel::startSortsByWhatIsStored()
{
    QFETCH(const QVariant, column);
    QFETCH(const QVariant, direction);
    World world;
    world.defaults.remove(Settings::LeftFileListSortingDirection);
    if (column.isValid())
        world.defaults.setValue(Settings::LeftFileListSortedColumn, column);
    if (direction.isValid())
        world.defaults.setValue(Settings::LeftFileListSortingDirection, direction);
    world.model.awakeFromNib();
    QTEST(*world.window.tables.left.column, "sortedBy");
    QTEST(*world.window.tables.left.direction, "towards");
    const bool up = world.window.tables.left.direction == SortDirection::Ascending;
    if (world.window.tables.left.column == Column::Name)
        QCOMPARE(world.row(u"a"_s) < world.row(u"b"_s), up);
    QCOMPARE(world.refreshed, QList<Side>({ Side::Left, Side::Right }));
}

void tst_MainModel::startFoldersTakeThePlaceOfTheStored()
{
    World world;
    world.model.setStartFolder(Side::Right, { world.folder.path(u"left"_s), u"b"_s });
    world.model.setStartFolder(Side::Left, { world.folder.path(u"right"_s), u"not there"_s });
    world.model.awakeFromNib();
    QCOMPARE(world.shown(Side::Left), world.folder.path(u"right"_s));
    QCOMPARE(world.window.tables.left.selected, RowSet { 0 });
    const int row = int(world.model.rowsRight().rowOfName(u"b"_s));
    QVERIFY(row > 0);
    QCOMPARE(world.window.tables.right.selected, RowSet { row });
    QCOMPARE(world.window.tables.right.scrolledTo, row);
}

void tst_MainModel::startWithoutAnythingStoredListsTheHomeFolder()
{
    World world;
    world.defaults.remove(Settings::LeftFileListLastPath);
    world.defaults.setValue(Settings::RightFileListLastPath, QString());
    world.model.awakeFromNib();
    QCOMPARE(world.shown(Side::Left), PathText::homeFolder());
    QCOMPARE(world.shown(Side::Right), PathText::homeFolder());
    QCOMPARE(world.window.paths.left, PathText::homeFolder());
}

void tst_MainModel::hiddenFilesTitle_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("title");
    QTest::newRow("absent") << QVariant() << u"Show system files"_s;
    QTest::newRow("hidden") << QVariant(false) << u"Show system files"_s;
    QTest::newRow("shown") << QVariant(true) << u"Hide system files"_s;
}

void tst_MainModel::hiddenFilesTitle()
{
    QFETCH(const QVariant, stored);
    World world;
    if (stored.isValid())
        world.defaults.setValue(Settings::ShowHiddenFiles, stored);
    world.model.setUserDefaultValues();
    QTEST(world.window.hiddenItemsTitle, "title");
}

void tst_MainModel::reloadSortsByTheLastDirectionOfEitherPane()
{
    World world;
    world.model.awakeFromNib();
    QVERIFY(world.row(u"a"_s) < world.row(u"b"_s));
    world.model.sortRowEntries(Column::Size, Side::Right, SortDirection::Descending);
    QVERIFY(world.row(u"a"_s) < world.row(u"b"_s));
    world.bus.post(DirectoryChanged.left, { .path = world.shown() });
    QVERIFY(world.row(u"a"_s) > world.row(u"b"_s));
    QCOMPARE(world.window.tables.left.column, Column::Name);
}

void tst_MainModel::rememberedRowIsKeptOrForgotten_data()
{
    QTest::addColumn<std::optional<QString>>("item");
    QTest::addColumn<int>("row");
    using Item = std::optional<QString>;
    QTest::newRow("going up") << Item(u".."_s) << 2;
    QTest::newRow("on the way the pane shows") << Item(u"sub"_s) << 2;
    QTest::newRow("part of a name on that way") << Item(u"su"_s) << 2;
    QTest::newRow("reached anew") << Item(u"elsewhere"_s) << 0;
    QTest::newRow("empty item") << Item(QString(u""_s)) << 0;
    QTest::newRow("plain reload") << Item() << 0;
}

void tst_MainModel::rememberedRowIsKeptOrForgotten()
{
    QFETCH(const std::optional<QString>, item);
    QFETCH(const int, row);
    World world;
    world.model.awakeFromNib();
    const QString left = world.folder.path(u"left"_s);
    for (const Side side : { Side::Left, Side::Right }) {
        world.model.selectedItems(side).setRow(2, left);
        world.window.paths[side] = left + u"/sub"_s;
        world.bus.post(DirectoryChanged[side], { .path = left, .item = item });
        QCOMPARE(world.window.tables[side].selected, RowSet { row });
        QCOMPARE(world.window.tables[side].scrolledTo, row);
        QCOMPARE(world.model.selectedItems(side).row(left), row);
    }
}

void tst_MainModel::rememberedRowBeyondTheEndSelectsNothing()
{
    World world;
    world.model.awakeFromNib();
    world.model.selectedItems(Side::Left).setRow(99, world.folder.path(u"left"_s));
    world.bus.post(DirectoryChanged.left,
                   { .path = world.folder.path(u"left"_s), .item = u".."_s });
    QCOMPARE(world.window.tables.left.scrolledTo, 99);
    QVERIFY(world.window.tables.left.selected.isEmpty());
}

void tst_MainModel::rememberedRowsSurviveTheSettings()
{
    World world;
    SelectionMemory memory;
    const QString odd = world.folder.path(FileName::fromBytes("odd \xff"));
    memory.setRow(7, odd);
    QVariantMap stored = memory.toDictionary();
    stored.insert(u"/damaged"_s, u"no number"_s);
    world.defaults.setValue(Settings::SelectedItemsRight, stored);
    QVERIFY(world.defaults.synchronize());
    const UserDefaults again(world.defaults.filePath());
    QCOMPARE(again.dictionary(Settings::SelectedItemsRight), stored);
    world.model.awakeFromNib();
    QCOMPARE(world.model.selectedItems(Side::Right).row(odd), 7);
    QCOMPARE(world.model.selectedItems(Side::Right).toDictionary().size(), 1);
    QCOMPARE(world.model.selectedItems(Side::Left).row(odd), 0);
}

void tst_MainModel::openingARow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown"); // the folder listed afterwards
    QTest::addColumn<QString>("call");
    QTest::newRow("folder") << u"sub"_s << u"left/sub"_s << QString();
    QTest::newRow("link to a folder") << u"to sub"_s << u"left/sub"_s << QString();
    QTest::newRow("parent row") << u".."_s << QString() << QString();
    QTest::newRow("file") << u"a"_s << u"left"_s << u"open"_s;
    QTest::newRow("application") << u"Program.app"_s << u"left"_s << u"launch"_s;
    QTest::newRow("installer package") << u"Setup.pkg"_s << u"left"_s << u"install"_s;
}

void tst_MainModel::openingARow()
{
    QFETCH(const QString, name);
    QFETCH(const QString, shown);
    QFETCH(const QString, call);
    World world;
    world.model.awakeFromNib();
    world.window.focus = Side::Right;
    world.changes.clear();
    world.refreshed.clear();
    const int row = world.row(name);
    world.open(name);
    QCOMPARE(world.workspace.calls.value(0).value(0), call);
    if (!call.isEmpty())
        QCOMPARE(world.workspace.calls.value(0).value(1), world.folder.path(u"left/"_s + name));
    // A link to a folder is entered by the folder's own path, or by the link's; it is that folder.
    const QString path = shown.isEmpty() ? world.folder.path() : world.folder.path(shown);
    QVERIFY(world.shown() == path || name == u"to sub"_s);
    QCOMPARE(world.names().contains(u"deep"_s), shown == u"left/sub"_s);
    const bool enters = call.isEmpty();
    QCOMPARE(world.changes.size(), enters ? 1 : 0);
    if (enters)
        QCOMPARE(world.changes[0].item, name);
    // The row is remembered where a folder was opened; the active pane is refreshed after "..".
    QCOMPARE(world.model.selectedItems(Side::Left).row(world.folder.path(u"left"_s)),
             shown == u"left/sub"_s ? row : 0);
    QCOMPARE(world.refreshed, name == u".."_s ? QList<Side> { Side::Right } : QList<Side> {});
}

void tst_MainModel::openingSeveralRowsEntersNone()
{
    World world;
    world.model.awakeFromNib();
    world.open(RowSet { world.row(u"sub"_s), world.row(u"a"_s) });
    const QString left = world.folder.path(u"left"_s);
    QCOMPARE(world.shown(), left);
    QCOMPARE(world.workspace.calls,
             QList<QStringList>(
                 { { u"open"_s, left + u"/sub"_s, u""_s }, { u"open"_s, left + u"/a"_s, u""_s } }));
}

void tst_MainModel::goingUpSelectsTheFolderLeft()
{
    World world;
    world.model.awakeFromNib();
    const int row = world.row(u"sub"_s);
    QVERIFY(row > 0);
    world.open(u"sub"_s);
    QCOMPARE(world.window.tables.left.selected, RowSet { 0 });
    world.open(u".."_s);
    QCOMPARE(world.shown(), world.folder.path(u"left"_s));
    QCOMPARE(world.window.tables.left.selected, RowSet { row });
}

void tst_MainModel::goingUpStaysAtTheRoot()
{
    World world;
    world.model.awakeFromNib();
    world.bus.post(DirectoryChanged.left, { .path = u"/"_s });
    world.open(u".."_s);
    QCOMPARE(world.shown(), u"/"_s);
    QVERIFY(world.names().size() > 1);
}

void tst_MainModel::packagesAreEnteredInsideABundle_data()
{
    QTest::addColumn<QString>("navigatorPath");
    QTest::addColumn<bool>("inside"); // afterwards
    QTest::newRow("the way leads through one") << u"/x/app/y"_s << true;
    QTest::newRow("the way leads through none") << u"/x/y"_s << false;
}

void tst_MainModel::packagesAreEnteredInsideABundle()
{
    QFETCH(const QString, navigatorPath);
    World world;
    world.model.awakeFromNib();
    world.model.setInsideBundle(true);
    world.window.paths.left = navigatorPath;
    world.open(u"Program.app"_s);
    QCOMPARE(world.shown(), world.folder.path(u"left/Program.app"_s));
    QVERIFY(world.workspace.calls.isEmpty());
    QTEST(world.model.insideBundle(), "inside");
}

void tst_MainModel::goForwardFollowsThePath_data()
{
    QTest::addColumn<QString>("way"); // below the pane's folder
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("inside");
    QTest::newRow("one level") << u"/sub/deep"_s << u"left/sub"_s << false;
    QTest::newRow("the deepest stays") << QString() << u"left"_s << true;
    QTest::newRow("towards a bundle")
        << u"/Program.app/Contents"_s << u"left/Program.app"_s << true;
}

void tst_MainModel::goForwardFollowsThePath()
{
    QFETCH(const QString, way);
    QFETCH(const QString, shown);
    World world;
    world.model.awakeFromNib();
    world.model.setInsideBundle(true);
    const QString left = world.folder.path(u"left"_s);
    world.window.paths.left = left + way;
    world.window.segment = int(PathText::components(left).size()) - 1;
    world.changes.clear();
    const int row = world.row(u"sub"_s);
    world.bus.post(GotoNextDirectory.left, { { row }, world.model.rowsLeft() });
    QCOMPARE(world.shown(), world.folder.path(shown));
    QTEST(world.model.insideBundle(), "inside");
    QCOMPARE(world.changes.size(), way.isEmpty() ? 0 : 1);
    if (!way.isEmpty()) {
        QCOMPARE(world.changes[0].item, u".."_s);
        QCOMPARE(world.model.selectedItems(Side::Left).row(left), row);
    }
}

void tst_MainModel::requests_data()
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

void tst_MainModel::requests()
{
    QFETCH(const int, command);
    QFETCH(const QString, verb);
    QFETCH(const QStringList, items);
    QFETCH(const QString, destination);
    World world;
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

void tst_MainModel::renameToNothingNewDoesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("same name") << u"b"_s;
    QTest::newRow("no name") << QString();
}

void tst_MainModel::renameToNothingNewDoesNothing()
{
    QFETCH(const QString, typed);
    World world;
    world.model.awakeFromNib();
    world.window.typed = typed;
    world.bus.post(RenameItem, world.request(u"b"_s));
    QCOMPARE(world.window.prompts.size(), 1);
    QVERIFY(world.desk.verbs.isEmpty());
}

void tst_MainModel::newFolderNeedsAName()
{
    World world;
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

void tst_MainModel::bothPanesAreRefreshedWhenTheyShowOnePath()
{
    World world;
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

void tst_MainModel::copyIntoTheSameFolderIsRefusedFirst_data()
{
    QTest::addColumn<bool>("moves");
    QTest::addColumn<QString>("other"); // what the right pane shows
    QTest::addColumn<QString>("text");
    QTest::newRow("copy") << false << u"left"_s << u"Item(s) cannot copied in itself!"_s;
    QTest::newRow("move") << true << u"left"_s << u"Item(s) cannot moved in itself!"_s;
    QTest::newRow("by another name")
        << true << u"same as left"_s << u"Item(s) cannot moved in itself!"_s;
}

void tst_MainModel::copyIntoTheSameFolderIsRefusedFirst()
{
    QFETCH(const bool, moves);
    QFETCH(const QString, other);
    World world(true);
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

void tst_MainModel::parentRowIsRefused_data()
{
    addItemCommands();
}

void tst_MainModel::parentRowIsRefused()
{
    QFETCH(const int, command);
    World world(true);
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

void tst_MainModel::rowsThatAreGoneAreDropped_data()
{
    addItemCommands();
}

void tst_MainModel::rowsThatAreGoneAreDropped()
{
    QFETCH(const int, command);
    World world(true);
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

void tst_MainModel::rowsAreFoundAgainByPath()
{
    World world;
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
void tst_MainModel::parentRowAndItsFolderAreNotMixedUp()
{
    World world;
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

void tst_MainModel::confirmationDecides_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("text");
    QTest::newRow("copy") << 0 << u"Are you sure that you want to copy the item(s)?"_s;
    QTest::newRow("move") << 1 << u"Are you sure that you want to move the item(s)?"_s;
    QTest::newRow("delete")
        << 2 << u"Are you sure that you want to move the selected 2 item(s) to trash?"_s;
}

void tst_MainModel::confirmationDecides()
{
    QFETCH(const int, command);
    World world(true);
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

void tst_MainModel::rowCountIsAnswered()
{
    struct Counter {
        void count(Side side, const RowCount &rows) { counts[side] = rows.count; }
        PerSide<int> counts { -1, -1 };
    } counter;
    World world;
    world.bus.subscribe(SelectRow, &counter, &Counter::count);
    world.bus.post(GetRowCount.right);
    QCOMPARE(counter.counts.right, 0);
    world.model.awakeFromNib();
    world.bus.post(GetRowCount.left);
    QCOMPARE(counter.counts.left, world.model.rowsLeft().size());
}

void tst_MainModel::anEndedWorkerStopsTheIndicator()
{
    World world;
    world.model.awakeFromNib();
    world.bus.post(CopyItem, world.request(u"b"_s));
    world.model.threadWillExit({ Operation::Copy });
    QCOMPARE(world.window.spinners, 0);
    QCOMPARE(world.desk.records.size(), 1);
}

QTEST_MAIN(tst_MainModel)
#include "tst_MainModel.moc"
