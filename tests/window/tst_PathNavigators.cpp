#include "window/PathNavigators.h"

#include "model/MainModel.h"
#include "platform/FileKinds.h"
#include "platform/Localized.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SettingsKeys.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct World {
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    PaneWindowStub window;
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    SegmentedControl left;
    SegmentedControl right;
    PathNavigators navigators { left, right, bus, model, queries, defaults };

    World() { model.setWindowController(&window); }

    // Relative to the test's folder.
    void show(Side side, const QString &path, const std::optional<QString> &item = {})
    {
        bus.post(DirectoryChanged[side], { .path = folder.path(path), .item = item });
    }
    QStringList deepestLabels(Side side) const
    {
        QStringList labels;
        const SegmentedControl &control = navigators.control(side);
        const auto above = PathText::components(folder.path()).size();
        for (int i = int(above); i < control.segmentCount(); ++i)
            labels.append(control.label(i));
        return labels;
    }
    QString selected(Side side) const
    {
        const SegmentedControl &control = navigators.control(side);
        return control.label(control.selectedSegment());
    }
};

} // namespace

class tst_PathNavigators : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goingUpKeepsTheDeeperSegments();
    void aFolderOffThePathReplacesIt();
    void aClickGoesToThePathOfTheSegment();
    void theOtherPanesFolder();
    void onlyTheLeftPaneKnowsWhatLiesInItsPath();
    void theFontSizeNeedsAStyle_data();
    void theFontSizeNeedsAStyle();
};

void tst_PathNavigators::goingUpKeepsTheDeeperSegments()
{
    World world;
    world.folder.makeFolder(u"A/B/C"_s);
    world.show(Side::Left, u"A/B/C"_s);
    QCOMPARE(world.selected(Side::Left), u"C"_s);
    world.show(Side::Left, u"A/B"_s, u".."_s);
    QCOMPARE(world.deepestLabels(Side::Left), QStringList({ u"A"_s, u"B"_s, u"C"_s }));
    QCOMPARE(world.selected(Side::Left), u"B"_s);
    QCOMPARE(world.navigators.navigatorPath(Side::Left), world.folder.path(u"A/B"_s));
    QCOMPARE(world.navigators.completeNavigatorPath(Side::Left), world.folder.path(u"A/B/C"_s));

    // Back down along the path: nothing is cut off.
    world.show(Side::Left, u"A"_s, u".."_s);
    world.show(Side::Left, u"A/B"_s, u"B"_s);
    QCOMPARE(world.deepestLabels(Side::Left), QStringList({ u"A"_s, u"B"_s, u"C"_s }));
}

void tst_PathNavigators::aFolderOffThePathReplacesIt()
{
    World world;
    world.folder.makeFolder(u"A/B/C"_s);
    world.folder.makeFolder(u"A/B/X"_s);
    world.show(Side::Right, u"A/B/C"_s);
    world.show(Side::Right, u"A/B"_s, u".."_s);
    world.show(Side::Right, u"A/B/X"_s, u"X"_s);
    QCOMPARE(world.deepestLabels(Side::Right), QStringList({ u"A"_s, u"B"_s, u"X"_s }));
    QCOMPARE(world.navigators.completeNavigatorPath(Side::Right), world.folder.path(u"A/B/X"_s));
    // A reload names no item, and shows no more than the folder.
    world.show(Side::Right, u"A"_s, u".."_s);
    world.show(Side::Right, u"A"_s);
    QCOMPARE(world.deepestLabels(Side::Right), QStringList { u"A"_s });
}

void tst_PathNavigators::aClickGoesToThePathOfTheSegment()
{
    World world;
    const QString odd = u"A/"_s + QChar(0xDCFF); // one byte that is not UTF-8
    world.folder.makeFolder(odd + u"/C"_s);
    world.show(Side::Left, odd + u"/C"_s);
    SegmentedControl &control = world.left;
    control.resize(2000, 30);
    QTest::mouseClick(&control, Qt::LeftButton, {},
                      control.segmentRect(control.segmentCount() - 2).center());
    QCOMPARE(world.navigators.navigatorPath(Side::Left), world.folder.path(odd));
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(0).center());
    QCOMPARE(world.navigators.navigatorPath(Side::Left), u"/"_s);
    QCOMPARE(world.navigators.getCurrentNavigatorPath(Side::Left), u"/"_s);
    // By the keyboard: to the end of the path, which is still there.
    for (const auto key : { Qt::Key_End, Qt::Key_Return })
        QTest::keyClick(&control, key);
    QCOMPARE(world.navigators.navigatorPath(Side::Left), world.folder.path(odd + u"/C"_s));
}

void tst_PathNavigators::theOtherPanesFolder()
{
    World world;
    world.folder.makeFolder(u"A"_s);
    world.folder.makeFolder(u"B"_s);
    world.show(Side::Left, u"A"_s);
    world.show(Side::Right, u"B"_s);
    world.navigators.useOpositePath(Side::Right);
    QCOMPARE(world.navigators.navigatorPath(Side::Right), world.folder.path(u"A"_s));
    QCOMPARE(world.navigators.navigatorPath(Side::Left), world.folder.path(u"A"_s));
}

void tst_PathNavigators::onlyTheLeftPaneKnowsWhatLiesInItsPath()
{
    World world;
    world.folder.makeFolder(u"Some.app"_s);
    for (const Side side : { Side::Left, Side::Right })
        world.show(side, u"Some.app"_s);
    QVERIFY(world.navigators.isItemInNavigatorPath(u"app"_s, Side::Left));
    QVERIFY(!world.navigators.isItemInNavigatorPath(u"absent"_s, Side::Left));
    // Sides differ.
    QVERIFY(!world.navigators.isItemInNavigatorPath(u"app"_s, Side::Right));
}

void tst_PathNavigators::theFontSizeNeedsAStyle_data()
{
    QTest::addColumn<QVariant>("size");
    QTest::addColumn<QVariant>("style");
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("bold");
    QTest::newRow("nothing stored") << QVariant() << QVariant() << 10 << true;
    QTest::newRow("a size alone") << QVariant(13) << QVariant() << 10 << true;
    QTest::newRow("both") << QVariant(u"13"_s) << QVariant(localized("Normal")) << 13 << false;
    QTest::newRow("a style alone") << QVariant() << QVariant(localized("Normal")) << 10 << false;
    QTest::newRow("unknown style") << QVariant(13) << QVariant(u"Wide"_s) << 10 << true;
}

void tst_PathNavigators::theFontSizeNeedsAStyle()
{
    QFETCH(QVariant, size);
    QFETCH(QVariant, style);
    World world;
    if (size.isValid())
        world.defaults.setValue(Settings::PathNavigatorsFontSize, size);
    if (style.isValid())
        world.defaults.setValue(Settings::PathNavigatorsFontStyle, style);
    world.navigators.setupPathNavigators();
    QTEST(world.left.font().pointSize(), "points");
    QTEST(world.right.font().bold(), "bold");
}

QTEST_MAIN(tst_PathNavigators)
#include "tst_PathNavigators.moc"
