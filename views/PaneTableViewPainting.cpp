#include "base/Localized.h"
#include "model/CutItems.h"
#include "model/FileQueries.h"
#include "views/PaneTableView.h"
#include "widgets/Colors.h"
#include "widgets/Icons.h"
#include "widgets/RoundRect.h"

#include <QHeaderView>
#include <QPainter>
#include <QPaintEvent>

namespace {

constexpr int SizeGap = 6; // pixels
constexpr double Inset = 1.0; // pixels, of labels and plates
constexpr double LabelRadius = 10.0; // pixels
constexpr double PlateRadius = 4.0; // pixels
constexpr int LabelStart = 20; // pixels of a label that a selection leaves, under the icon
constexpr int LabelEnd = 10; // and at the other end
constexpr double PassiveContrast = 3.2;
constexpr double PassiveContrastInContrast = 11.5; // so that what is pale on it is read
constexpr int BadgeSide = 10; // pixels
constexpr double PaleOpacity = 0.5;
constexpr double ReadableOpacity = 0.75; // on a selection, and with high contrast

void paintRounded(QPainter &painter, const QRect &area, double radius, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(bezierPathWithRoundRect(QRectF(area).adjusted(Inset, Inset, -Inset, -Inset),
                                             radius, radius),
                     color);
    painter.restore();
}

// With high contrast a little away from the text that stands on it.
QColor shownLabelColor(int label)
{
    const QColor color = FileQueries::finderLabelColor(label);
    const QColor text = readableOn(color);
    return isHighContrast() ? standingOut(color, readableOn(text), text, EasyContrast) : color;
}

} // namespace

void PaneTableView::setActivePane(bool active)
{
    _isActive = active;
    update();
    redraw();
}

QColor PaneTableView::selectionColor() const
{
    if (_isActive)
        return palette().color(QPalette::Active, QPalette::Highlight);
    // Without the colour of the active one, and plain to see all the same.
    const QColor ground = palette().color(QPalette::Base);
    return standingOut(ground, palette().color(QPalette::Text), ground,
                       isHighContrast() ? PassiveContrastInContrast : PassiveContrast);
}

QColor PaneTableView::selectedTextColor() const
{
    return _isActive ? palette().color(QPalette::Active, QPalette::HighlightedText)
                     : readableOn(selectionColor());
}

void PaneTableView::paintFrame()
{
    QPainter painter(this);
    const QRect frame = rect();
    painter.fillRect(frame, palette().color(QPalette::Base));
    if (_isActive) {
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter.drawRect(QRectF(frame).adjusted(1, 1, -1, -1));
    } else {
        painter.setPen(
            faintLine(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.25));
        painter.drawRect(frame.adjusted(0, 0, -1, -1));
    }
}

// Rows are painted here, by the remembered bits: the base class asks the selection model for each
// cell, which walks all its ranges each time.
void PaneTableView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const int first = rowAt(event->rect().top());
    const int below = rowAt(event->rect().bottom());
    const int last = below < 0 ? rowCount() - 1 : below;
    for (int row = first; row >= 0 && row <= last; ++row)
        paintRow(painter, row);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, trouble());
    if (_dropRow)
        paintDropTarget(painter);
}

QString PaneTableView::trouble() const
{
    if (const auto error = _tableModel->rows().error())
        return filled(localized("This folder cannot be read: %@"),
                      QString::fromLocal8Bit(error.message().c_str()));
    return _tableModel->hidesAll() ? localized("No name fits the filter") : QString();
}

void PaneTableView::paintDropTarget(QPainter &painter)
{
    const QRectF area = *_dropRow < 0
        ? QRectF(viewport()->rect())
        : QRectF(0, rowViewportPosition(*_dropRow), viewport()->width(), rowHeight(*_dropRow));
    painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
    painter.drawRect(area.adjusted(1, 1, -1, -1));
}

void PaneTableView::showDropTarget(int row)
{
    if (_dropRow == row)
        return;
    _dropRow = row;
    viewport()->update();
}

void PaneTableView::hideDropTarget()
{
    _dropRow.reset();
    viewport()->update();
}

QPixmap PaneTableView::dragPixmap() const
{
    constexpr int MostRows = 6;
    QStringList names;
    const RowSet rows = selectedRows();
    for (const int row : rows.mid(0, MostRows))
        names.append(_tableModel->index(row, int(Column::Name)).data().toString());
    if (rows.size() > MostRows)
        names.append(filled(localized("%i item(s)"), int(rows.size())));

    const int lineHeight = fontMetrics().height() + 4;
    const int width = 200;
    const double scale = devicePixelRatioF();
    QPixmap pixmap(QSize(width, lineHeight * int(names.size())) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(selectionColor());
    QPainter painter(&pixmap);
    painter.setFont(font());
    painter.setPen(selectedTextColor());
    for (int line = 0; line < names.size(); ++line)
        painter.drawText(QRect(6, line * lineHeight, width - 12, lineHeight),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(names[line], Qt::ElideMiddle, width - 12));
    return pixmap;
}

QRect PaneTableView::rowArea(int row) const
{
    // Right of the last column there is nothing to click on, so nothing is shown there.
    const QHeaderView *header = horizontalHeader();
    const int width = std::min(viewport()->width(), header->length() - header->offset());
    const QRect area(0, rowViewportPosition(row), width, rowHeight(row));
    return QStyle::visualRect(layoutDirection(), viewport()->rect(), area);
}

void PaneTableView::setCutItems(const CutItems &cutItems)
{
    _cutItems = &cutItems;
    connect(_cutItems, &CutItems::changed, viewport(), qOverload<>(&QWidget::update));
}

bool PaneTableView::isCut(int row) const
{
    // The row ".." has the path of the listed folder, which is not what it shows.
    return _cutItems && !_cutItems->isEmpty() && isItemRow(row)
        && _cutItems->contains(_tableModel->rows()[row].path());
}

void PaneTableView::paintRow(QPainter &painter, int row)
{
    const QRect area = rowArea(row);
    const QColor textColor = paintRowBackground(painter, row, area);

    QStyleOptionViewItem option;
    initViewItemOption(&option);
    // The background is drawn already; the cells add only what stands on it.
    option.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    option.state.setFlag(QStyle::State_Enabled, isEnabled());
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::HighlightedText })
        option.palette.setColor(role, textColor);
    const double pale = isHighContrast() || isRowSelected(row) ? ReadableOpacity : PaleOpacity;
    painter.setOpacity(isCut(row) ? pale : 1);
    for (int column = 0; column < ColumnCount; ++column) {
        const QModelIndex index = _tableModel->index(row, column);
        option.rect = visualRect(index);
        if (column == int(Column::Size)) // the numbers keep clear of the dates
            option.rect.adjust(0, 0, -SizeGap, 0);
        // Of a long name the end tells as much as the start.
        option.textElideMode = column == int(Column::Name) ? Qt::ElideMiddle : textElideMode();
        if (column == int(Column::Icon))
            paintPlate(painter, row, option.rect);
        if (option.rect.right() >= 0 && option.rect.left() < viewport()->width())
            itemDelegateForIndex(index)->paint(&painter, option, index);
        if (column == int(Column::Icon) && _tableModel->rows()[row].isLink())
            paintLinkBadge(painter, option.rect);
    }
    painter.setOpacity(1);

    // A row that is the only selected one needs no further mark.
    if (hasFocus() && row == currentIndex().row()
        && (!isRowSelected(row) || _marks || numberOfSelectedRows() > 1)) {
        painter.setPen(isRowSelected(row) ? textColor : palette().color(QPalette::Highlight));
        painter.drawRect(area.adjusted(0, 0, -1, -1));
    }
}

void PaneTableView::paintPlate(QPainter &painter, int row, const QRect &iconCell)
{
    // Icons are drawn for the ground of the rows: a blue folder drowns in a blue selection.
    if (isRowSelected(row) && _tableModel->rows()[row].finderLabel() == 0)
        paintRounded(painter, iconCell, PlateRadius, palette().color(QPalette::Base));
}

void PaneTableView::paintLinkBadge(QPainter &painter, const QRect &iconCell)
{
    QRect badge(0, 0, BadgeSide, BadgeSide);
    badge.moveBottomLeft(iconCell.bottomLeft() - QPoint(-1, 1));
    themedIcon(QStringLiteral("emblem-symbolic-link")).paint(&painter, badge);
}

QColor PaneTableView::paintRowBackground(QPainter &painter, int row, const QRect &area)
{
    const int label = _tableModel->rows()[row].finderLabel();
    const QColor labelColor = shownLabelColor(label);
    if (!isRowSelected(row)) {
        if (label == 0)
            return palette().color(QPalette::Text);
        paintLabel(painter, area, labelColor);
        return readableOn(labelColor);
    }
    painter.fillRect(area, selectionColor());
    if (label != 0) {
        painter.save();
        painter.setClipRegion(QRegion(area)
                              - QStyle::visualRect(layoutDirection(), area,
                                                   area.adjusted(LabelStart, 0, -LabelEnd, 0)));
        paintLabel(painter, area, labelColor);
        painter.restore();
    }
    return selectedTextColor();
}

void PaneTableView::paintLabel(QPainter &painter, const QRect &area, const QColor &color)
{
    paintRounded(painter, area, LabelRadius, color);
}
