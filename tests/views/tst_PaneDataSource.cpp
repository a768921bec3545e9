#include "tests/views/PanesOnFolder.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace {

struct World : PanesOnFolder {
    World(const QStringList &names = { u"B"_s, u"a"_s, u"c"_s }, const QVariant &ascending = {})
        : PanesOnFolder(names)
    {
        defaults.setValue(Settings::LeftFileListSortingDirection, ascending);
        start();
    }
    QStringList afterClick(Column column, Side side = Side::Left)
    {
        const QHeaderView *header = table(side).horizontalHeader();
        const int x =
            header->sectionViewportPosition(int(column)) + header->sectionSize(int(column)) / 2;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
        return names(side);
    }
};

} // namespace

class tst_PaneDataSource : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void clicksSortAgainstTheStoredDirectionAndKeepTheSelection()
    {
        World world({ u"B"_s, u"a"_s, u"c"_s }, true);
        QCOMPARE(world.names(), QStringList({ u".."_s, u"B"_s, u"a"_s, u"c"_s }));
        world.left.selectRow(world.row(u"B"_s));
        QCOMPARE(world.afterClick(Column::Name), QStringList({ u".."_s, u"c"_s, u"a"_s, u"B"_s }));
        QCOMPARE(world.left.selectedRows(), RowSet { 3 });
        // A column without a stored direction starts upwards.
        QCOMPARE(world.afterClick(Column::Size), QStringList({ u".."_s, u"B"_s, u"a"_s, u"c"_s }));
        QCOMPARE(world.left.selectedRows(), RowSet { 1 });
        QCOMPARE(world.left.highlightedColumn(), Column::Size);
    }

    void sortStateSurvivesTermination()
    {
        World world;
        const QStringList before = world.names();
        QCOMPARE(world.afterClick(Column::Icon), before); // sorts by nothing
        QCOMPARE(world.left.horizontalHeader()->sortIndicatorSection(), int(Column::Name));
        world.afterClick(Column::Size, Side::Right);
        world.bus.post(ApplicationWillTerminate);
        QCOMPARE(world.defaults.string(Settings::RightFileListSortedColumn), u"Size"_s);
        QCOMPARE(world.defaults.boolean(Settings::RightFileListSortingDirection), true);
        QCOMPARE(world.defaults.string(Settings::LeftFileListSortedColumn), u"Name"_s);
        QCOMPARE(world.defaults.boolean(Settings::LeftFileListSortingDirection), false);
    }

    void selectAllLeavesOutTheParentRow()
    {
        World world;
        QSignalSpy changes(&world.leftSource, &PaneDataSource::selectionDidChange);
        world.left.selectAll();
        QCOMPARE(world.left.selectedRows(), (RowSet { 1, 2, 3 }));
        QCOMPARE(changes.count(), 1);

        World empty(QStringList {});
        empty.left.selectAll();
        QCOMPARE(empty.left.selectedRows(), RowSet { 0 });

        // By the keyboard, which can take rows back.
        QTest::keyClick(&world.left, Qt::Key_Home);
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(&world.left, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(world.left.selectedRows(), (RowSet { 1, 2, 3 }));
        QTest::keyClick(&world.left, Qt::Key_Up, Qt::ShiftModifier);
        QVERIFY(!world.left.isRowSelected(3));
    }

    void toolTipsShowTheCellInPlainForm()
    {
        World world({ u"<b>x"_s });
        world.left.tableModel().setDateFormat(u"%Y"_s);
        QCOMPARE(world.leftSource.toolTipForCell(Column::Name, 1), u"<b>x"_s);
        QCOMPARE(world.leftSource.toolTipForCell(Column::Icon, 1), QString());
        QCOMPARE(world.leftSource.toolTipForCell(Column::Name, 2), QString());
        const QString shown = world.left.model()->index(1, int(Column::Date)).data().toString();
        QCOMPARE(shown.size(), 4);
        const QString tip = world.leftSource.toolTipForCell(Column::Date, 1);
        QVERIFY(tip.startsWith(shown) && tip.size() > shown.size());

        world.defaults.setValue(Settings::ShowToolTips, false);
        world.model.setUserDefaultValues();
        QCOMPARE(world.leftSource.toolTipForCell(Column::Name, 1), QString());
    }
};

QTEST_MAIN(tst_PaneDataSource)
#include "tst_PaneDataSource.moc"
