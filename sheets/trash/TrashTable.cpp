#include "sheets/trash/TrashTable.h"

#include "base/Localized.h"
#include "sheets/trash/TrashModel.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int NameWidth = 240; // pixels
constexpr int SizeWidth = 90;

} // namespace

TrashTable::TrashTable(TrashModel &rows, QWidget *parent)
    : RowTable(rows, parent)
    , _rows(rows)
{
    setAccessibleName(localized("Trash"));
    setSelectionMode(ExtendedSelection);
    QHeaderView *header = horizontalHeader();
    header->setSortIndicator(TrashModel::DeletedColumn, Qt::DescendingOrder);
    setSortingEnabled(true);
    header->setSectionResizeMode(TrashModel::OriginColumn, QHeaderView::Stretch);
    setColumnWidth(TrashModel::NameColumn, NameWidth);
    setColumnWidth(TrashModel::DeletedColumn, 19 * fontMetrics().horizontalAdvance(u'0'));
    setColumnWidth(TrashModel::SizeColumn, SizeWidth);
}

QList<TrashedItem> TrashTable::selectedItems() const
{
    QList<int> rows;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange &range : ranges)
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    std::ranges::sort(rows);
    QList<TrashedItem> items;
    items.reserve(rows.size());
    for (const int row : std::as_const(rows))
        items.append(_rows.items()[row]);
    return items;
}

void TrashTable::setItems(const QList<TrashedItem> &items)
{
    const int current = currentIndex().row();
    const QList<TrashedItem> selected = selectedItems();
    _rows.setItems(items);
    QItemSelection again;
    // Of thousands nobody misses one.
    constexpr qsizetype Few = 100;
    for (const TrashedItem &item : selected.mid(0, Few))
        if (const int row = _rows.rowOf(item); row >= 0)
            again.select(_rows.index(row, 0), _rows.index(row, TrashModel::SizeColumn));
    if (_rows.rowCount() == 0)
        return;
    // What took the place of the ones that are gone.
    const int row =
        again.isEmpty() ? qBound(0, current, _rows.rowCount() - 1) : again.first().top();
    const QModelIndex index = _rows.index(row, TrashModel::NameColumn);
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!again.isEmpty())
        selectionModel()->select(again, QItemSelectionModel::ClearAndSelect);
    scrollTo(index);
}

void TrashTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    RowTable::selectionChanged(selected, deselected);
    Q_EMIT selectionAltered();
}

void TrashTable::keyPressEvent(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (event->key() == Qt::Key_Delete && modifiers == Qt::NoModifier)
        Q_EMIT removeAsked();
    else if (event->key() == Qt::Key_F5 && modifiers == Qt::NoModifier)
        Q_EMIT reloadAsked();
    else
        RowTable::keyPressEvent(event);
}
