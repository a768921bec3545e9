#include "widgets/ColorWell.h"

#include "widgets/Colors.h"

#include <QColorDialog>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace {

constexpr int Letters = 9; // its width
constexpr int Margin = 3; // around the colour, within the frame
constexpr int Check = 5; // of the pattern that shines through

} // namespace

ColorWell::ColorWell(QWidget *parent)
    : QPushButton(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, &ColorWell::choose);
    setColor(_color);
}

void ColorWell::setColor(const QColor &color)
{
    _color = color;
    setAccessibleDescription(color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
    setToolTip(accessibleDescription());
    update();
}

QSize ColorWell::sizeHint() const
{
    return { Letters * fontMetrics().averageCharWidth(),
             QPushButton::sizeHint().expandedTo({ 0, fontMetrics().height() }).height() };
}

void ColorWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
    const QRect area = style()
                           ->subElementRect(QStyle::SE_PushButtonContents, &option, this)
                           .adjusted(Margin, Margin, -Margin, -Margin);
    painter.save();
    painter.setClipRect(area);
    painter.fillRect(area, Qt::white);
    for (int y = 0; _color.alpha() < 255 && y < area.height(); y += Check)
        for (int x = y / Check % 2 * Check; x < area.width(); x += 2 * Check)
            painter.fillRect(area.x() + x, area.y() + y, Check, Check, Qt::lightGray);
    painter.fillRect(area, _color);
    painter.restore();
    painter.setPen(
        faintLine(palette().color(QPalette::Button), palette().color(QPalette::ButtonText), 0.4));
    painter.drawRect(area.adjusted(0, 0, -1, -1));
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void ColorWell::choose()
{
    QColorDialog dialog(_color, this);
    dialog.setWindowTitle(accessibleName());
    dialog.setOption(QColorDialog::ShowAlphaChannel);
    const auto buttons = dialog.findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->setIcon({}); // no other sheet has any on its buttons
    if (dialog.exec() == QDialog::Accepted)
        setColor(dialog.selectedColor());
}
