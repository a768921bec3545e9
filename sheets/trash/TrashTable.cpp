#include "sheets/trash/TrashTable.h"

#include "base/Localized.h"
#include "sheets/trash/TrashModel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int IconSide = 16; // pixels, as the rest
constexpr int Padding = 3; // over and under a row
constexpr int NameWidth = 240;
constexpr int SizeWidth = 90;

} // namespace

TrashTable::TrashTable(TrashModel &rows, QWidget *parent)
    : QTableView(parent)
    , _rows(rows)
{
    setModel(&rows);
    setAccessibleName(localized("Trash"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setIconSize({ IconSide, IconSide });
    setCornerButtonEnabled(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(std::max(IconSide, fontMetrics().height())
                                            + 2 * Padding);
    verticalHeader()->hide();
    QHeaderView *header = horizontalHeader();
    header->setHighlightSections(false);
    header->setSortIndicator(TrashModel::DeletedColumn, Qt::DescendingOrder);
    setSortingEnabled(true);
    header->setSectionResizeMode(TrashModel::OriginColumn, QHeaderView::Stretch);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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

void TrashTable::setPlaceholder(const QString &text)
{
    _placeholder = text;
    viewport()->update();
}

void TrashTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    Q_EMIT selectionAltered();
}

// Of a table of rows: to the first and the last one.
QModelIndex TrashTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveHome || action == MoveEnd)
        modifiers |= Qt::ControlModifier;
    return QTableView::moveCursor(action, modifiers);
}

void TrashTable::keyPressEvent(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (event->key() == Qt::Key_Delete && modifiers == Qt::NoModifier)
        Q_EMIT removeAsked();
    else if (event->key() == Qt::Key_F5 && modifiers == Qt::NoModifier)
        Q_EMIT reloadAsked();
    else
        QTableView::keyPressEvent(event);
}

void TrashTable::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (_placeholder.isEmpty() || _rows.rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(viewport()->rect(), int(Qt::AlignCenter) | Qt::TextWordWrap, _placeholder);
}
