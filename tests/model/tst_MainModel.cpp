#include "platform/FileName.h"
#include "tests/model/PaneModelWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_MainModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startSortsByWhatIsStored_data();
    void startSortsByWhatIsStored();
    void startFoldersTakeThePlaceOfTheStored();
    void startWithoutAnythingStoredListsTheHomeFolder();
    void hiddenFilesTitle_data();
    void hiddenFilesTitle();
    void linksAreFollowedAsSet_data();
    void linksAreFollowedAsSet();
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
    void goForwardFromTheParentRowRemembersNothing();
    void endOfAWorker_data();
    void endOfAWorker();
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
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
    if (stored.isValid())
        world.defaults.setValue(Settings::ShowHiddenFiles, stored);
    world.model.setUserDefaultValues();
    QTEST(world.window.hiddenItemsTitle, "title");
}

void tst_MainModel::linksAreFollowedAsSet_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("follows");
    QTest::newRow("absent") << QVariant() << true;
    QTest::newRow("followed") << QVariant(true) << true;
    QTest::newRow("as such") << QVariant(false) << false;
}

void tst_MainModel::linksAreFollowedAsSet()
{
    QFETCH(const QVariant, stored);
    QFETCH(const bool, follows);
    PaneModelWorld world;
    if (stored.isValid())
        world.defaults.setValue(Settings::TraverseLinks, stored);
    world.model.awakeFromNib();
    // The panes and what is asked about a path go by the same option.
    QCOMPARE(world.model.rowsLeft()[world.row(u"to sub"_s)].isFolder(), follows);
    QCOMPARE(world.queries.isPackage(world.folder.path(u"left/to sub"_s)), follows);
}

void tst_MainModel::reloadSortsByTheLastDirectionOfEitherPane()
{
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
    world.model.awakeFromNib();
    world.model.selectedItems(Side::Left).setRow(99, world.folder.path(u"left"_s));
    world.bus.post(DirectoryChanged.left,
                   { .path = world.folder.path(u"left"_s), .item = u".."_s });
    QCOMPARE(world.window.tables.left.scrolledTo, 99);
    QVERIFY(world.window.tables.left.selected.isEmpty());
}

void tst_MainModel::rememberedRowsSurviveTheSettings()
{
    PaneModelWorld world;
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
    QTest::newRow("application folder") << u"Tool.AppDir"_s << u"left"_s << u"launch"_s;
    QTest::newRow("file with an application's suffix") << u"f.app"_s << u"left"_s << u"launch"_s;
    QTest::newRow("installer package") << u"Setup.pkg"_s << u"left"_s << u"install"_s;
    QTest::newRow("package that nothing launches")
        << u"Kit.framework"_s << u"left/Kit.framework"_s << QString();
    QTest::newRow("alias of a folder") << u"alias.desktop"_s << u"left/sub"_s << QString();
    QTest::newRow("alias of a package") << u"kit.desktop"_s << u"left"_s << u"open"_s;
    QTest::newRow("alias that leads nowhere") << u"lost.desktop"_s << u"left"_s << u"open"_s;
}

void tst_MainModel::openingARow()
{
    QFETCH(const QString, name);
    QFETCH(const QString, shown);
    QFETCH(const QString, call);
    PaneModelWorld world;
    world.folder.makeFolder(u"left/Tool.AppDir"_s);
    world.folder.makeFolder(u"left/Kit.framework"_s);
    world.folder.write(u"left/f.app"_s);
    const auto alias = [&](const QString &from, const QString &to) {
        const QString url = u"file://"_s + world.folder.path(u"left/"_s + to);
        world.folder.write(u"left/"_s + from + u".desktop"_s,
                           "[Desktop Entry]\nType=Link\nURL=" + url.toUtf8() + '\n');
    };
    alias(u"alias"_s, u"sub"_s);
    alias(u"kit"_s, u"Kit.framework"_s);
    alias(u"lost"_s, u"nowhere"_s);
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
             name.endsWith(u"sub"_s) ? row : 0);
    QCOMPARE(world.refreshed, name == u".."_s ? QList<Side> { Side::Right } : QList<Side> {});
}

void tst_MainModel::openingSeveralRowsEntersNone()
{
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
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
    PaneModelWorld world;
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

// The parent row's path is the listed folder's own: its row is one level up.
void tst_MainModel::goForwardFromTheParentRowRemembersNothing()
{
    PaneModelWorld world;
    world.model.awakeFromNib();
    const QString left = world.folder.path(u"left"_s);
    world.model.selectedItems(Side::Left).setRow(3, world.folder.path());
    world.window.paths.left = left + u"/sub"_s;
    world.window.segment = int(PathText::components(left).size()) - 1;
    world.bus.post(GotoNextDirectory.left, { { 0 }, world.model.rowsLeft() });
    QCOMPARE(world.shown(), left + u"/sub"_s);
    QCOMPARE(world.model.selectedItems(Side::Left).row(world.folder.path()), 3);
}

void tst_MainModel::endOfAWorker_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("spinners"); // of one copy under way
    QTest::newRow("copy") << Operation::Copy << 0;
    QTest::newRow("move") << Operation::Move << 0;
    QTest::newRow("delete, which turned none on") << Operation::Delete << 1;
    QTest::newRow("new folder, which turned none on") << Operation::NewFolder << 1;
}

void tst_MainModel::endOfAWorker()
{
    QFETCH(const Operation, operation);
    PaneModelWorld world;
    world.window.setProgressIndicator(true);
    world.model.threadWillExit({ operation, u"/item"_s });
    QTEST(world.window.spinners, "spinners");
    QCOMPARE(world.desk.records.size(), 1);
    QCOMPARE(world.desk.records[0].operation, operation);
    QCOMPARE(world.desk.records[0].item, u"/item"_s);
}

QTEST_MAIN(tst_MainModel)
#include "tst_MainModel.moc"
