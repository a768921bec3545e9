#include "widgets/RecordTable.h"

#include "widgets/RecordTableModel.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int IconSide = 24;
constexpr int Padding = 4; // over and under an icon
constexpr int IconWidth = IconSide + 16;
constexpr int ShownRows = 7;
constexpr int Width = 460;

} // namespace

RecordTable::RecordTable(RecordTableModel &model, QWidget *parent)
    : QTreeView(parent)
    , records(model)
{
    setModel(&model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // and none but the visible rows is ever asked for
    setAllColumnsShowFocus(true);
    setTextElideMode(Qt::ElideMiddle);
    setIconSize({ IconSide, IconSide });
    setStyleSheet(QStringLiteral("QTreeView::item { height: %1px; }").arg(IconSide + 2 * Padding));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(IconWidth);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setStretchLastSection(true);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDragDropOverwriteMode(false);
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        shareWidth();
        Q_EMIT selectedRowChanged();
    });
}

int RecordTable::selectedRow() const
{
    const auto rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void RecordTable::selectRow(int row)
{
    setCurrentIndex(records.index(std::min(row, records.rowCount() - 1), 1));
}

QSize RecordTable::sizeHint() const
{
    return { Width,
             header()->sizeHint().height() + ShownRows * (IconSide + 2 * Padding)
                 + 2 * frameWidth() };
}

void RecordTable::keyPressEvent(QKeyEvent *event)
{
    const int row = selectedRow();
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_Delete && modifiers == Qt::NoModifier)
        Q_EMIT deleteAsked();
    else if (event->key() == Qt::Key_Up && modifiers == Qt::AltModifier && row > 0)
        Q_EMIT moveAsked(row, row - 1);
    else if (event->key() == Qt::Key_Down && modifiers == Qt::AltModifier && row >= 0
             && row + 1 < records.rowCount())
        Q_EMIT moveAsked(row, row + 2);
    else if (modifiers != Qt::AltModifier)
        QTreeView::keyPressEvent(event);
    else
        event->ignore();
}

int RecordTable::rowBefore(const QPoint &position) const
{
    const QModelIndex under = indexAt(position);
    if (!under.isValid())
        return records.rowCount();
    return under.row() + (position.y() > visualRect(under).center().y() ? 1 : 0);
}

void RecordTable::dropEvent(QDropEvent *event)
{
    const int row = selectedRow();
    if (event->source() != this || row < 0)
        return event->ignore();
    const int before = rowBefore(event->position().toPoint());
    // The list's owner moves it; nothing is left for the view to take away.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    if (before != row && before != row + 1)
        Q_EMIT moveAsked(row, before);
}

void RecordTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    Q_EMIT selectedRowChanged();
}

void RecordTable::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    shareWidth();
}

// The icons as wide as they are, the rest in equal parts; a column of texts that all stand in the
// one before it already says nothing.
void RecordTable::shareWidth()
{
    const int columns = records.columnCount();
    const auto repeats = [&](int column) {
        return column > 1 && records.rowCount() > 0
            && std::ranges::all_of(records.records(), [&](const auto &record) {
                   return record.texts.value(column - 1) == record.texts.value(column - 2);
               });
    };
    int shown = 0;
    for (int column = 1; column < columns; ++column) {
        setColumnHidden(column, repeats(column));
        shown += isColumnHidden(column) ? 0 : 1;
    }
    header()->resizeSection(RecordTableModel::IconColumn, IconWidth);
    for (int column = 1; column < columns; ++column)
        if (!isColumnHidden(column))
            header()->resizeSection(column, (viewport()->width() - IconWidth) / std::max(1, shown));
}
