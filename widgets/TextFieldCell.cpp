#include "widgets/TextFieldCell.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

void TextFieldCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.state &= ~QStyle::State_HasFocus; // the row that has it is selected
    const QString text = std::exchange(cell.text, QString());
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget); // what is behind it
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    const QRectF place =
        interior(QRectF(cell.rect).adjusted(margin, 0, -margin, 0), cell.fontMetrics.height());
    const bool isSelected = cell.state & QStyle::State_Selected;
    const auto group = !(cell.state & QStyle::State_Enabled) ? QPalette::Disabled
        : cell.state & QStyle::State_Active                  ? QPalette::Active
                                                             : QPalette::Inactive;
    painter->save();
    painter->setFont(cell.font);
    painter->setPen(
        cell.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(place, int(cell.displayAlignment) | Qt::TextSingleLine,
                      cell.fontMetrics.elidedText(text, cell.textElideMode, int(place.width())));
    painter->restore();
}
