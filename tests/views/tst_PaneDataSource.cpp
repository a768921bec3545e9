#include "tests/support/World.h"

#include <QHeaderView>

namespace {

// Files of growing size in both panes.
struct Panes : World {
    explicit Panes(const QVariant &ascending = {}, const QVariant &column = {})
        : World(u"left/B=1, left/a=22, left/c=333"_s)
    {
        if (ascending.isValid())
            defaults.setValue(Settings::LeftFileListSortingDirection, ascending);
        if (column.isValid())
            defaults.setValue(Settings::LeftFileListSortedColumn, column);
        startOnLeft();
    }
    Qt::SortOrder arrow() { return list().horizontalHeader()->sortIndicatorOrder(); }
    QString afterClick(Column column, Side side = Side::Left)
    {
        const QHeaderView *header = list(side).horizontalHeader();
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
        Panes world(true);
        QCOMPARE(world.names(), u".. B a c"_s);
        world.list().selectRow(world.row(u"B"_s));
        QCOMPARE(world.afterClick(Column::Name), u".. c a B"_s);
        QCOMPARE(world.list().selectedRows(), RowSet { 3 });
        // A column without a stored direction starts upwards.
        QCOMPARE(world.afterClick(Column::Size), u".. B a c"_s);
        QCOMPARE(world.list().selectedRows(), RowSet { 1 });
        QCOMPARE(world.list().highlightedColumn(), Column::Size);
    }

    void theArrowIsThatOfTheRows()
    {
        const struct {
            QVariant ascending, column; // stored
            QString names;
        } rows[] = {
            { {}, {}, u".. B a c"_s }, // a new pane
            { false, {}, u".. c a B"_s },
            { true, u"Name"_s, u".. B a c"_s },
            { {}, u"Name"_s, u".. c a B"_s }, // absent beside a column: downwards
            { {}, u"Size"_s, u".. c a B"_s },
            { true, u"Icon"_s, u".. B a c"_s }, // sorts by nothing
            { {}, u"size"_s, u".. c a B"_s }, // no such column
        };
        for (const auto &[ascending, column, names] : rows) {
            Panes world(ascending, column);
            QCOMPARE(world.names(), names);
            QCOMPARE(world.arrow() == Qt::AscendingOrder, names == u".. B a c"_s);
            QCOMPARE(world.list().highlightedColumn(),
                     column == u"Size"_s ? Column::Size : Column::Name);
        }
        // Kept: listed again, a pane takes the direction last used in either; and its arrow too.
        Panes world;
        world.afterClick(Column::Name, Side::Right);
        world.show(Side::Left, u"left"_s);
        QCOMPARE(world.names(), u".. c a B"_s);
        QCOMPARE(world.arrow(), Qt::DescendingOrder);
        // Sorted from the menu, which shows by what.
        world.focus(Side::Left);
        world.run(Command::SortBySize);
        QCOMPARE(world.names(), u".. B a c"_s);
        QVERIFY(world.isEnabled(Command::SortBySize)
                && world.commands.action(Command::SortBySize)->isChecked()
                && !world.commands.action(Command::SortByName)->isChecked());
    }

    void sortStateSurvivesTermination()
    {
        Panes world;
        const QString before = world.names();
        QCOMPARE(world.afterClick(Column::Icon), before); // sorts by nothing
        QCOMPARE(world.list().horizontalHeader()->sortIndicatorSection(), int(Column::Name));
        world.afterClick(Column::Size, Side::Right);
        world.bus.post(ApplicationWillTerminate);
        QCOMPARE(world.defaults.string(Settings::RightFileListSortedColumn), u"Size"_s);
        QCOMPARE(world.defaults.boolean(Settings::RightFileListSortingDirection), true);
        QCOMPARE(world.defaults.string(Settings::LeftFileListSortedColumn), u"Name"_s);
        QCOMPARE(world.defaults.boolean(Settings::LeftFileListSortingDirection), true);
    }

    void selectAllLeavesOutTheParentRow()
    {
        Panes world;
        world.list().selectAll();
        QCOMPARE(world.list().selectedRows(), (RowSet { 1, 2, 3 }));
        StartedWorld empty;
        empty.list().selectAll();
        QCOMPARE(empty.selected(), u".."_s);
    }

    void toolTipsShowTheCellInPlainForm()
    {
        StartedWorld world(u"left/<b>x=a"_s);
        const TableViewDataSourceLeft source(*world.window.leftFileList, world.model, world.bus,
                                             world.defaults);
        world.list().tableModel().setDateFormat(u"%Y"_s);
        QCOMPARE(source.toolTipForCell(Column::Name, 1), u"<b>x"_s);
        QCOMPARE(source.toolTipForCell(Column::Icon, 1), QString());
        QCOMPARE(source.toolTipForCell(Column::Name, 2), QString()); // no such row
        QVERIFY(source.toolTipForCell(Column::Date, 1).size() > 4); // more than the year shown
        world.defaults.setValue(Settings::ShowToolTips, false);
        world.model.setUserDefaultValues();
        QCOMPARE(source.toolTipForCell(Column::Name, 1), QString());
    }
};

QTEST_MAIN(tst_PaneDataSource)
#include "tst_PaneDataSource.moc"
