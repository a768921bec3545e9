#include "tests/views/PanesOnFolder.h"
#include "util/SettingsKeys.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace {

const QStringList Files { u"B"_s, u"a"_s, u"c"_s };

void clickHeader(PaneTableView &table, Column column)
{
    const QHeaderView *header = table.horizontalHeader();
    const int x =
        header->sectionViewportPosition(int(column)) + header->sectionSize(int(column)) / 2;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
}

} // namespace

class tst_PaneDataSource : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void clicksSortAgainstTheStoredDirection();
    void clickOnIconsChangesNothing();
    void sortingKeepsTheSelectedItems();
    void sortStateSurvivesTermination();
    void selectAllLeavesOutTheParentRow();
    void selectionShrinksAfterItHeldEverything();
    void toolTipsShowTheCellInPlainForm();
};

void tst_PaneDataSource::clicksSortAgainstTheStoredDirection()
{
    PanesOnFolder panes(Files);
    panes.defaults.setValue(Settings::LeftFileListSortedColumn, u"Name"_s);
    panes.defaults.setValue(Settings::LeftFileListSortingDirection, true);
    panes.start();
    QCOMPARE(panes.names(Side::Left), QStringList({ u".."_s, u"B"_s, u"a"_s, u"c"_s }));
    clickHeader(panes.left, Column::Name);
    QCOMPARE(panes.names(Side::Left), QStringList({ u".."_s, u"c"_s, u"a"_s, u"B"_s }));
    // A column without a stored direction starts upwards.
    clickHeader(panes.left, Column::Size);
    QCOMPARE(panes.names(Side::Left), QStringList(u".."_s) + Files);
    QCOMPARE(panes.left.highlightedColumn(), Column::Size);
}

void tst_PaneDataSource::clickOnIconsChangesNothing()
{
    PanesOnFolder panes(Files);
    panes.start();
    const QStringList before = panes.names(Side::Left);
    clickHeader(panes.left, Column::Icon);
    QCOMPARE(panes.names(Side::Left), before);
    QCOMPARE(panes.left.highlightedColumn(), Column::Name);
    QCOMPARE(panes.left.horizontalHeader()->sortIndicatorSection(), int(Column::Name));
}

void tst_PaneDataSource::sortingKeepsTheSelectedItems()
{
    PanesOnFolder panes(Files);
    panes.start();
    panes.left.selectRow(int(panes.names(Side::Left).indexOf(u"B"_s)));
    for (int click = 0; click < 2; ++click) {
        clickHeader(panes.left, Column::Name);
        QCOMPARE(panes.left.selectedRows().size(), 1);
        QCOMPARE(panes.name(Side::Left, panes.left.selectedRow()), u"B"_s);
    }
}

void tst_PaneDataSource::sortStateSurvivesTermination()
{
    PanesOnFolder panes(Files);
    panes.start();
    clickHeader(panes.right, Column::Size);
    panes.bus.post(ApplicationWillTerminate);
    QCOMPARE(panes.defaults.string(Settings::RightFileListSortedColumn), u"Size"_s);
    QCOMPARE(panes.defaults.boolean(Settings::RightFileListSortingDirection), true);
    QCOMPARE(panes.defaults.string(Settings::LeftFileListSortedColumn), u"Name"_s);
    QCOMPARE(panes.defaults.boolean(Settings::LeftFileListSortingDirection), false);
}

void tst_PaneDataSource::selectAllLeavesOutTheParentRow()
{
    PanesOnFolder panes(Files);
    panes.start();
    QSignalSpy changes(&panes.leftSource, &PaneDataSource::selectionDidChange);
    panes.left.selectAll();
    QCOMPARE(panes.left.selectedRows(), (RowSet { 1, 2, 3 }));
    QCOMPARE(changes.count(), 1);

    PanesOnFolder empty({});
    empty.start();
    empty.left.selectAll();
    QCOMPARE(empty.left.selectedRows(), RowSet { 0 });
}

void tst_PaneDataSource::selectionShrinksAfterItHeldEverything()
{
    PanesOnFolder panes(Files);
    panes.start();
    QTest::keyClick(&panes.left, Qt::Key_Home);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&panes.left, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(panes.left.selectedRows(), (RowSet { 1, 2, 3 }));
    QTest::keyClick(&panes.left, Qt::Key_Up, Qt::ShiftModifier);
    QVERIFY(!panes.left.isRowSelected(3));
}

void tst_PaneDataSource::toolTipsShowTheCellInPlainForm()
{
    PanesOnFolder panes({ u"<b>x"_s });
    panes.start();
    panes.left.tableModel().setDateFormat(u"%Y"_s);
    QCOMPARE(panes.leftSource.toolTipForCell(Column::Name, 1), u"<b>x"_s);
    QCOMPARE(panes.leftSource.toolTipForCell(Column::Icon, 1), QString());
    QCOMPARE(panes.leftSource.toolTipForCell(Column::Name, 2), QString());
    const QString shown = panes.left.model()->index(1, int(Column::Date)).data().toString();
    QCOMPARE(shown.size(), 4);
    const QString tip = panes.leftSource.toolTipForCell(Column::Date, 1);
    QVERIFY(tip.startsWith(shown) && tip.size() > shown.size());

    panes.defaults.setValue(Settings::ShowToolTips, false);
    panes.model.setUserDefaultValues();
    QCOMPARE(panes.leftSource.toolTipForCell(Column::Name, 1), QString());
}

QTEST_MAIN(tst_PaneDataSource)
#include "tst_PaneDataSource.moc"
