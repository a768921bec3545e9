#include "window/PathNavigators.h"

#include "base/Localized.h"
#include "tests/support/World.h"
#include "widgets/Mnemonics.h"

#include <QAccessible>
#include <QSignalSpy>

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
            // Sides differ.
            QCOMPARE(world.shows.isItemInNavigatorPath(u"B/C"_s, side), side == Side::Left);
            QVERIFY(!world.shows.isItemInNavigatorPath(u"absent"_s, side));
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
        const auto widths = [&](int room) {
            control.resize(room, 30);
            QList<int> found;
            for (int segment = 0; segment < 7; ++segment)
                found.append(control.segmentRect(segment).width());
            return found;
        };
        const QList<int> wide = widths(2000);
        const int all = control.segmentRect(6).right() + 1;
        widths(all - 1);
        // Room without the middle.
        const int folded = all - wide[1] - wide[2] - wide[3] + control.foldRect().width();
        const std::pair<int, QString> rows[] = {
            // The segments that can be read.
            { all, u"0123456"_s },
            { all - wide[1] / 2, u"023456"_s }, // the one behind the root
                                                // goes first
            { folded, u"0456"_s },
            { folded - wide[6] / 2, u"045"_s },
            { wide[5] + 10, u"5"_s },
            { wide[5] / 2, u""_s },
        };
        for (const auto &[room, readable] : rows) {
            const QList<int> narrow = widths(room);
            QString whole;
            for (int segment = 0; segment < 7; ++segment)
                if (narrow[segment] == wide[segment])
                    whole += QString::number(segment);
            QCOMPARE(whole, readable);
            QVERIFY(std::reduce(narrow.begin(), narrow.end(), control.foldRect().width()) <= room);
        }
        // By mouse and keyboard a menu of what is folded comes up.
        control.resize(folded, 30);
        control.show();
        const QSignalSpy chosen(&control, &SegmentedControl::clicked);
        const auto choose = [&](int item) {
            QTRY_VERIFY(QApplication::activePopupWidget());
            const auto items = QApplication::activePopupWidget()->actions();
            QCOMPARE(items.size(), 3); // of segments 1 to 3
            QCOMPARE(Mnemonics::unmarked(items[item]->text()), names[item + 1]);
            items[item]->trigger();
            QApplication::activePopupWidget()->close();
            QCOMPARE(control.selectedSegment(), item + 1);
        };
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.foldRect().center());
        choose(2);
        control.setSelectedSegment(5);
        control.setFocus();
        control.activateWindow();
        QTRY_VERIFY(control.hasFocus());
        for (const auto key : { Qt::Key_Left, Qt::Key_Left })
            QTest::keyClick(&control, key);
        QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&control);
        QCOMPARE(reader->focusChild(), reader->child(7));
        QCOMPARE(reader->focusChild()->role(), QAccessible::ButtonMenu);
        QVERIFY(!reader->child(3)->state().focused);
        QTest::keyClick(&control, Qt::Key_Return);
        choose(1);
        QCOMPARE(chosen.size(), 2);
    }

    // Kept.
    void withoutAStyleTheFontSizeIsIgnored()
    {
        const struct {
            QString style;
            QVariant size;
            int shown;
        } rows[] = {
            { {}, u"13"_s, 10 },
            { localized("Normal"), u"13"_s, 13 },
            { localized("Normal"), 0LL, 10 },
            { localized("Normal"), -5LL, 10 },
            { localized("Normal"), 5000LL, 72 },
        };
        for (const auto &row : rows) {
            World world;
            world.defaults.setValue(Settings::PathNavigatorsFontSize, row.size);
            world.defaults.setValue(Settings::PathNavigatorsFontStyle, row.style);
            world.start();
            const QFont font = world.window.segmentedControls.left->font();
            QCOMPARE(font.pointSize(), row.shown);
            QCOMPARE(font.bold(), row.style.isEmpty());
        }
    }
};

QTEST_MAIN(tst_PathNavigators)
#include "tst_PathNavigators.moc"
