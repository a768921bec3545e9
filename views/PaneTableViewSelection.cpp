#include "views/PaneTableView.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

int PaneTableView::selectedRow() const
{
    if (isRowSelected(_newestRow))
        return _newestRow;
    if (isRowSelected(currentIndex().row()))
        return currentIndex().row();
    for (int row = int(_selected.size()) - 1; row >= 0; --row)
        if (_selected[row])
            return row;
    return -1;
}

RowSet PaneTableView::selectedRows() const
{
    RowSet rows;
    rows.reserve(_selected.count(true));
    for (int row = 0; row < _selected.size(); ++row)
        if (_selected[row])
            rows.append(row);
    return rows;
}

void PaneTableView::selectRow(int row)
{
    _marks = false;
    selectRows({ row });
}

void PaneTableView::selectRows(const RowSet &rows)
{
    const QItemSelection selection = ranges(rows);
    if (selection.isEmpty()) {
        clearSelection();
        setCurrentRow(currentIndex().row());
        return;
    }
    if (!_marks)
        setCurrentRow(selection.last().bottom());
    select(selection);
    redraw();
}

void PaneTableView::select(const QItemSelection &selection)
{
    {
        // The selection model compares each old range with each new one; with none there is nothing
        // to compare. Receivers hear of the change once, from the selection that follows.
        const QSignalBlocker quiet(selectionModel());
        selectionModel()->clearSelection();
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    keepMarks();
}

void PaneTableView::deselectRow(int row)
{
    RowSet rows = selectedRows();
    rows.removeOne(row);
    // One selection, not a deselection on top: so Shift with the arrows can still take rows back.
    select(ranges(rows));
    redraw(); // nobody tells the view of what is taken away
}

void PaneTableView::scrollToRow(int row)
{
    if (row >= 0 && row < rowCount())
        scrollTo(_tableModel->index(row, int(Column::Icon)));
}

ShownRows PaneTableView::shownRows() const
{
    return { selectedRows(), currentIndex().row(), rowAt(0), selectedRow(), _marks };
}

void PaneTableView::changeRows(const RowChanges &changes)
{
    const bool scrolls = hasAutoScroll();
    const int newest = changes.rowNow(_newestRow);
    setAutoScroll(false);
    _changingRows = true;
    _tableModel->changeRows(changes);
    _changingRows = false;
    setAutoScroll(scrolls);
    rememberSelection();
    _newestRow = newest;
    redraw();
}

void PaneTableView::showRows(const ShownRows &rows)
{
    _marks = rows.marked && !rows.selected.isEmpty();
    if (!std::ranges::equal(rows.selected, selectedRows()))
        selectRows(rows.selected);
    keepMarks();
    if (rows.current != currentIndex().row()) {
        // Shift with arrows goes on extending from where it began.
        setCurrentRow(otherEndOfRange(rows.current));
        selectionModel()->setCurrentIndex(_tableModel->index(rows.current, int(Column::Name)),
                                          QItemSelectionModel::NoUpdate);
    }
    if (isRowSelected(rows.newest))
        _newestRow = rows.newest;
    executeDelayedItemsLayout(); // else there is nothing to scroll yet
    if (rows.first >= 0)
        verticalScrollBar()->setValue(rows.first);
}

bool PaneTableView::isPointedAt() const
{
    const bool isClicked =
        _sinceClick.isValid() && !_sinceClick.hasExpired(QApplication::doubleClickInterval());
    return isClicked || _dropRow;
}

void PaneTableView::redraw()
{
    viewport()->update();
}

QItemSelection PaneTableView::ranges(const RowSet &rows) const
{
    QItemSelection selection;
    const int count = rowCount();
    const auto outside = [count](int row) { return row < 0 || row >= count; };
    for (qsizetype first = 0; first < rows.size();) {
        qsizetype last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        const int top = std::max(rows[first], 0);
        const int bottom = std::min(rows[last], count - 1);
        if (!outside(top) && top <= bottom)
            selection.append(QItemSelectionRange(_tableModel->index(top, 0),
                                                 _tableModel->index(bottom, ColumnCount - 1)));
        first = last + 1;
    }
    return selection;
}

void PaneTableView::setCurrentRow(int row)
{
    // A new current row alone must not move what is in view.
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    _settingCurrentRow = true;
    // The view's own, not the selection model's: Shift with arrows and clicks extends from it.
    setCurrentIndex(_tableModel->index(row, int(Column::Name)));
    _settingCurrentRow = false;
    setAutoScroll(scrolls);
}

// Of the selected rows next to one another that the row begins or ends; else the row itself.
int PaneTableView::otherEndOfRange(int row) const
{
    int top = row;
    int bottom = row;
    while (isRowSelected(top - 1))
        --top;
    while (isRowSelected(bottom + 1))
        ++bottom;
    const bool isSelected = isRowSelected(row);
    return isSelected && top == row ? bottom : isSelected && bottom == row ? top : row;
}

void PaneTableView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // A click puts it on any cell; screen readers read the name.
    if (current.isValid() && current.column() != int(Column::Name)) {
        selectionModel()->setCurrentIndex(current.siblingAtColumn(int(Column::Name)),
                                          QItemSelectionModel::NoUpdate);
        return;
    }
    QTableView::currentChanged(current, previous);
    redraw(); // the whole rows: the mark goes across
}

void PaneTableView::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    // Later: the toolkit tells of the table as a whole when this has returned.
    QMetaObject::invokeMethod(this, &PaneTableView::tellCurrentRow, Qt::QueuedConnection);
}

void PaneTableView::tellCurrentRow()
{
    if (!hasFocus() || !currentIndex().isValid() || !QAccessible::isActive())
        return;
    QAccessibleTableInterface *table =
        QAccessible::queryAccessibleInterface(this)->tableInterface();
    if (QAccessibleInterface *name = table->cellAt(currentIndex().row(), int(Column::Name))) {
        QAccessibleEvent reached(name, QAccessible::Focus);
        QAccessible::updateAccessibility(&reached);
    }
}

QItemSelectionModel::SelectionFlags PaneTableView::selectionCommand(const QModelIndex &index,
                                                                    const QEvent *event) const
{
    const bool byKey = event && event->type() == QEvent::KeyPress;
    const bool extends =
        byKey && static_cast<const QKeyEvent *>(event)->modifiers() & Qt::ShiftModifier;
    const bool leavesMarks = _marks && byKey && !extends;
    return _settingCurrentRow || leavesMarks ? QItemSelectionModel::NoUpdate
                                             : QTableView::selectionCommand(index, event);
}

QModelIndex PaneTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers held)
{
    // The first and the last row, not cell of a row.
    if (action == MoveHome || action == MoveEnd)
        return _tableModel->index(action == MoveHome ? 0 : rowCount() - 1, int(Column::Name));
    return QTableView::moveCursor(action, held);
}

void PaneTableView::selectionChanged(const QItemSelection &selected,
                                     const QItemSelection &deselected)
{
    if (_changingRows) // its numbers are neither those of before nor those of now
        return QTableView::selectionChanged(selected, deselected);
    rememberSelection();
    if (numberOfSelectedRows() == 0)
        _marks = false;
    if (!selected.isEmpty())
        _newestRow =
            selected.contains(currentIndex()) ? currentIndex().row() : selected.last().bottom();
    QTableView::selectionChanged(selected, deselected);
    tellSelection();
}

void PaneTableView::tellSelection()
{
    if (!_quiet)
        Q_EMIT selectedRowsChanged();
}

void PaneTableView::rememberSelection()
{
    _selected.fill(false, rowCount());
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection)
        _selected.fill(true, range.top(), range.bottom() + 1);
}

void PaneTableView::reset()
{
    QTableView::reset();
    _newestRow = -1;
    _marks = false;
    rememberSelection();
    // The selection model says nothing of a selection that ends with its rows.
    tellSelection();
    // What is painted where there are no rows is told to screen readers.
    const bool isNews = trouble() != accessibleDescription();
    setAccessibleDescription(trouble());
    if (isNews && !accessibleDescription().isEmpty()) {
        QAccessibleEvent told(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    }
}
