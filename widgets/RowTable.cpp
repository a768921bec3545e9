#include "widgets/RowTable.h"

#include <QHeaderView>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int IconSide = 16; // pixels
constexpr int Padding = 3; // over and under a row

} // namespace

RowTable::RowTable(QAbstractItemModel &model, QWidget *parent)
    : QTableView(parent)
{
    setModel(&model);
    setSelectionBehavior(SelectRows);
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
    horizontalHeader()->setHighlightSections(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void RowTable::setPlaceholder(const QString &text)
{
    _placeholder = text;
    viewport()->update();
}

// Not within the row: to the first and the last one.
QModelIndex RowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveHome || action == MoveEnd)
        modifiers |= Qt::ControlModifier;
    return QTableView::moveCursor(action, modifiers);
}

void RowTable::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (_placeholder.isEmpty() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(viewport()->rect(), int(Qt::AlignCenter) | Qt::TextWordWrap, _placeholder);
}
