#include "window/PathNavigators.h"

#include "base/Localized.h"
#include "tests/support/PaneWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct World : PaneWorld {
    SegmentedControl left;
    SegmentedControl right;
    PathNavigators navigators { left, right, bus, model, queries, defaults };

    // Those below the test's folder, the selected one in brackets.
    QString segments(Side side) const
    {
        QStringList labels;
        const SegmentedControl &control = navigators.control(side);
        for (int i = int(PathText::components(folder.path()).size()); i < control.segmentCount();
             ++i)
            labels.append(
                (i == control.selectedSegment() ? u"[%1]"_s : u"%1"_s).arg(control.label(i)));
        return labels.join(u'/');
    }
};

} // namespace

class tst_PathNavigators : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void segmentsStayUntilTheFolderLeavesTheirPath()
    {
        const struct {
            QString path;
            std::optional<QString> item;
            QString segments;
        } steps[] = {
            { u"A/B/C"_s, {}, u"A/B/[C]"_s },
            { u"A/B"_s, u".."_s, u"A/[B]/C"_s },
            { u"A"_s, u".."_s, u"[A]/B/C"_s },
            { u"A/B"_s, u"B"_s, u"A/[B]/C"_s },
            { u"A/B/X"_s, u"X"_s, u"A/B/[X]"_s },
            { u"A"_s, u".."_s, u"[A]/B/X"_s },
            { u"A"_s, {}, u"[A]"_s }, // a reload names no item
        };
        World world;
        for (const QString &name : { u"A/B/C"_s, u"A/B/X"_s })
            world.folder.makeFolder(name);
        for (const Side side : { Side::Left, Side::Right }) {
            for (const auto &step : steps) {
                world.show(side, step.path, step.item);
                QCOMPARE(world.segments(side), step.segments);
                QCOMPARE(world.shown(side), world.folder.path(step.path));
                QCOMPARE(world.navigators.completeNavigatorPath(side),
                         world.folder.path(QString(step.segments).remove(u'[').remove(u']')));
            }
        }
    }

    void anotherFolderOfAShownNameKeepsTheCompletePath()
    {
        World world;
        for (const QString &name : { u"A/B/C"_s, u"A/C"_s })
            world.folder.makeFolder(name);
        world.show(Side::Right, u"A/B/C"_s);
        world.show(Side::Right, u"A/C"_s, u"C"_s);
        QCOMPARE(world.segments(Side::Right), u"A/[C]/C"_s);
        QCOMPARE(world.navigators.completeNavigatorPath(Side::Right),
                 world.folder.path(u"A/B/C"_s));
    }

    void aClickGoesToThePathOfTheSegment()
    {
        World world;
        const QString odd = u"A/"_s + QChar(0xDCFF); // one byte that is not UTF-8
        world.folder.makeFolder(odd + u"/C"_s);
        world.show(Side::Left, odd + u"/C"_s);
        SegmentedControl &control = world.left;
        control.resize(2000, 30);
        const auto click = [&](int segment) {
            QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(segment).center());
            return world.shown(Side::Left);
        };
        QCOMPARE(click(control.segmentCount() - 2), world.folder.path(odd));
        QCOMPARE(click(0), u"/"_s);
        QCOMPARE(world.navigators.getCurrentNavigatorPath(Side::Left), u"/"_s);
        // By the keyboard: to the end of the path, which is still there.
        for (const auto key : { Qt::Key_End, Qt::Key_Return })
            QTest::keyClick(&control, key);
        QCOMPARE(world.shown(Side::Left), world.folder.path(odd + u"/C"_s));
    }

    void aNarrowBarKeepsTheShownFolderReadable()
    {
        SegmentedControl control;
        const QString names[] = { u"first of all"_s, u"second"_s, u"the one shown"_s,
                                  u"further on"_s };
        control.setSegmentCount(4);
        for (int segment = 0; segment < 4; ++segment)
            control.setLabel(segment, names[segment]);
        control.setSelectedSegment(2);
        control.resize(2000, 30);
        const auto width = [&](int segment) { return control.segmentRect(segment).width(); };
        const int shown = width(2);
        const int second = width(1);
        control.resize(control.segmentRect(3).right() + 1 - width(0) / 2, 30);
        QCOMPARE(width(1), second); // the first gives way first
        control.resize(shown + 10, 30);
        QCOMPARE(width(2), shown);
        control.resize(shown / 2, 30);
        QCOMPARE(width(2), shown / 2);
    }

    void onlyTheLeftPaneKnowsWhatLiesInItsPath()
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

    void theFontSizeNeedsAStyle()
    {
        const QVariant normal = localized("Normal");
        const struct {
            QVariant size, style;
            int points;
            bool bold;
        } rows[] = {
            { {}, {}, 10, true },      { 13, {}, 10, true },        { u"13"_s, normal, 13, false },
            { {}, normal, 10, false }, { 13, u"Wide"_s, 10, true },
        };
        World world;
        for (const auto &row : rows) {
            world.defaults.setValue(Settings::PathNavigatorsFontSize, row.size);
            world.defaults.setValue(Settings::PathNavigatorsFontStyle, row.style);
            world.navigators.setupPathNavigators();
            QCOMPARE(world.left.font().pointSize(), row.points);
            QCOMPARE(world.right.font().bold(), row.bold);
        }
    }
};

QTEST_MAIN(tst_PathNavigators)
#include "tst_PathNavigators.moc"
