#include "window/PathNavigators.h"

#include "base/Localized.h"
#include "tests/support/World.h"
#include "widgets/Mnemonics.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

struct Panes : StartedWorld {
    using StartedWorld::StartedWorld;
    PaneWindow &shows = application.windowController();

    const SegmentedControl &bar(Side side) const { return *window.segmentedControls[side]; }
    // Those below the test's folder, the selected one in brackets.
    QString segments(Side side) const
    {
        QStringList labels;
        const SegmentedControl &control = bar(side);
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
            QString complete = QString(segments).remove(u'[').remove(u']');
        } steps[] = {
            { u"A/B/C"_s, {}, u"A/B/[C]"_s },
            { u"A/B"_s, u".."_s, u"A/[B]/C"_s },
            { u"A"_s, u".."_s, u"[A]/B/C"_s },
            { u"A/B"_s, u"B"_s, u"A/[B]/C"_s },
            { u"A/B/X"_s, u"X"_s, u"A/B/[X]"_s },
            { u"A"_s, u".."_s, u"[A]/B/X"_s },
            { u"A"_s, {}, u"[A]"_s }, // a reload names no item
            { u"A/B/C"_s, {}, u"A/B/[C]"_s },
            { u"A/C"_s, u"C"_s, u"A/[C]/C"_s, u"A/B/C"_s }, // another folder of a shown name
        };
        Panes world(u"A/B/C/, A/B/X/, A/C/"_s);
        for (const Side side : { Side::Left, Side::Right }) {
            for (const auto &step : steps) {
                world.show(side, step.path, step.item);
                QCOMPARE(world.segments(side), step.segments);
                QCOMPARE(world.shown(side), world.folder.path(step.path));
                QCOMPARE(world.shows.completeNavigatorPath(side), world.folder.path(step.complete));
            }
        }
    }

    void aClickGoesToThePathOfTheSegment()
    {
        Panes world;
        const QString odd = u"A/"_s + QChar(0xDCFF); // one byte that is not UTF-8
        world.folder.makeFolder(odd + u"/C"_s);
        world.show(Side::Left, odd + u"/C"_s);
        SegmentedControl &control = *world.window.segmentedControls.left;
        control.resize(2000, 30);
        const auto click = [&](int segment) {
            QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(segment).center());
            return world.shown(Side::Left);
        };
        QCOMPARE(click(control.segmentCount() - 2), world.folder.path(odd));
        QCOMPARE(click(0), u"/"_s);
        world.bus.post(ApplicationWillTerminate); // remembers the path up to the segment
        QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath), u"/"_s);
        // By the keyboard: to the end of the path, which is still there.
        for (const auto key : { Qt::Key_End, Qt::Key_Return })
            QTest::keyClick(&control, key);
        QCOMPARE(world.shown(Side::Left), world.folder.path(odd + u"/C"_s));
    }

    void aNarrowBarFoldsTheMiddle()
    {
        SegmentedControl control;
        const QString names[] = { u"/"_s,      u"first of all"_s,  u"second"_s,    u"third"_s,
                                  u"parent"_s, u"the one shown"_s, u"further on"_s };
        control.setSegmentCount(7);
        for (int segment = 0; segment < 7; ++segment)
            control.setLabel(segment, names[segment]);
        control.setSelectedSegment(5);
        control.resize(2000, 30);
        const auto width = [&](int segment) { return control.segmentRect(segment).width(); };
        QList<int> wide;
        for (int segment = 0; segment < 7; ++segment)
            wide.append(width(segment));
        const int all = control.segmentRect(6).right() + 1;
        control.resize(all - 1, 30);
        const int fold = control.foldRect().width();
        const int folded = all - wide[1] - wide[2] - wide[3] + fold; // room without them
        const struct {
            int room;
            QList<int> readable; // segments
        } rows[] = {
            { all, { 0, 1, 2, 3, 4, 5, 6 } },
            { all - wide[1] / 2, { 0, 2, 3, 4, 5, 6 } }, // the one behind the root goes first
            { folded, { 0, 4, 5, 6 } },
            { folded - wide[6] / 2, { 0, 4, 5 } },
            { wide[5] + 10, { 5 } },
            { wide[5] / 2, {} },
        };
        for (const auto &[room, readable] : rows) {
            control.resize(room, 30);
            QList<int> whole;
            int used = control.foldRect().width();
            for (int segment = 0; segment < 7; ++segment) {
                used += width(segment);
                if (width(segment) == wide[segment])
                    whole.append(segment);
            }
            QCOMPARE(whole, readable);
            QVERIFY(used <= room);
            QCOMPARE(control.segmentCount(), 7); // in painting only
        }
        // By mouse and keyboard a menu of what is folded comes up.
        control.resize(folded, 30);
        control.show();
        const QSignalSpy chosen(&control, &SegmentedControl::clicked);
        const auto choose = [&](const QString &name) {
            QTRY_VERIFY(QApplication::activePopupWidget());
            QStringList items;
            for (QAction *item : QApplication::activePopupWidget()->actions()) {
                items.append(Mnemonics::unmarked(item->text()));
                if (items.last() == name)
                    item->trigger();
            }
            QApplication::activePopupWidget()->close();
            QCOMPARE(items.join(u' '), u"first of all second third"_s);
        };
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.foldRect().center());
        choose(u"third"_s);
        QCOMPARE(control.selectedSegment(), 3);
        control.setSelectedSegment(5);
        control.setFocus();
        for (const auto key : { Qt::Key_Left, Qt::Key_Left, Qt::Key_Return })
            QTest::keyClick(&control, key);
        choose(u"second"_s);
        QCOMPARE(control.selectedSegment(), 2);
        QCOMPARE(chosen.size(), 2);
    }

    void onlyTheLeftPaneKnowsWhatLiesInItsPath()
    {
        Panes world(u"Some.app/"_s);
        for (const Side side : { Side::Left, Side::Right })
            world.show(side, u"Some.app"_s);
        QVERIFY(world.shows.isItemInNavigatorPath(u"app"_s, Side::Left));
        QVERIFY(!world.shows.isItemInNavigatorPath(u"absent"_s, Side::Left));
        // Sides differ.
        QVERIFY(!world.shows.isItemInNavigatorPath(u"app"_s, Side::Right));
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
        for (const auto &[size, style, points, bold] : rows) {
            World world;
            world.defaults.setValue(Settings::PathNavigatorsFontSize, size);
            world.defaults.setValue(Settings::PathNavigatorsFontStyle, style);
            world.start();
            QCOMPARE(world.window.segmentedControls.left->font().pointSize(), points);
            QCOMPARE(world.window.segmentedControls.right->font().bold(), bold);
        }
    }
};

QTEST_MAIN(tst_PathNavigators)
#include "tst_PathNavigators.moc"
