#include "sheets/search/SearchResultTable.h"

#include "sheets/search/SearchResultModel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

constexpr int IconWidth = 32;

} // namespace

SearchResultTable::SearchResultTable(SearchResultModel &model, QWidget *parent)
    : RowTable(model, parent)
    , results(model)
{
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerItem);
    horizontalHeader()->setMinimumSectionSize(IconWidth);
    // Also where a scroll bar takes some of the width, which stretching the last one forgets.
    horizontalHeader()->setSectionResizeMode(SearchResultModel::PathColumn, QHeaderView::Stretch);
    setHorizontalScrollMode(ScrollPerPixel);
    setColumnWidth(SearchResultModel::IconColumn, IconWidth);
}

int SearchResultTable::selectedRow() const
{
    const QModelIndex current = currentIndex();
    return selectionModel()->isRowSelected(current.row(), {}) ? current.row() : -1;
}

int SearchResultTable::topRow() const
{
    return verticalScrollBar()->value();
}

void SearchResultTable::reload()
{
    const int oldTop = topRow();
    const int oldRow = selectedRow();
    const int place = oldRow - oldTop; // of the selected row in what is seen
    const bool isSeen =
        oldRow >= 0 && place >= 0 && rowViewportPosition(oldRow) < viewport()->height();
    int top = 0;
    {
        const QScopedValueRollback reloading(_reloading, true);
        results.reload();
        const int row = oldRow >= 0 ? results.rowOf(_selected) : -1;
        if (row >= 0)
            selectionModel()->setCurrentIndex(results.index(row, SearchResultModel::NameColumn),
                                              QItemSelectionModel::ClearAndSelect
                                                  | QItemSelectionModel::Rows);
        else
            _selected = {};
        if (isSeen && row >= 0)
            top = row - place;
        else if (oldTop > 0)
            top = results.rowOf(_top);
        if (top < 0) // that one is gone: those after it take its place
            top = oldTop;
        executeDelayedItemsLayout();
        verticalScrollBar()->setValue(top);
    }
    _top = results.resultAt(topRow());
    viewport()->update();
}

void SearchResultTable::reset()
{
    RowTable::reset();
    if (_reloading)
        return;
    _selected = {};
    _top = {};
}

void SearchResultTable::selectionChanged(const QItemSelection &selected,
                                         const QItemSelection &deselected)
{
    RowTable::selectionChanged(selected, deselected);
    if (!_reloading)
        _selected = results.resultAt(selectedRow());
}

void SearchResultTable::scrollContentsBy(int dx, int dy)
{
    RowTable::scrollContentsBy(dx, dy);
    if (!_reloading)
        _top = results.resultAt(topRow());
}

void SearchResultTable::keyPressEvent(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && modifiers == Qt::NoModifier)
        Q_EMIT openAsked();
    else if (isReturn && modifiers == Qt::ControlModifier)
        Q_EMIT folderAsked();
    else if (event->key() == Qt::Key_Up && modifiers == Qt::NoModifier && selectedRow() <= 0)
        Q_EMIT leftUpwards();
    else if (event->matches(QKeySequence::Copy) && !_selected.path.isEmpty())
        QGuiApplication::clipboard()->setText(_selected.path);
    else
        RowTable::keyPressEvent(event);
}
