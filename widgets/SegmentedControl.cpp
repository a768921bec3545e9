#include "widgets/SegmentedControl.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "widgets/Colors.h"
#include "widgets/RoundRect.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int Padding = 8; // left and right of a label
constexpr double Radius = 5;

} // namespace

SegmentedControl::SegmentedControl(QWidget *parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the pane
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void SegmentedControl::setControlSize(ControlSize size)
{
    _controlSize = size;
    updateGeometry();
    update();
}

void SegmentedControl::setSegmentCount(int count)
{
    _segments.resize(count);
    if (_selected >= count)
        _selected = count - 1;
    update();
}

QString SegmentedControl::label(int segment) const
{
    return _segments.value(segment).label;
}

void SegmentedControl::setLabel(int segment, const QString &label)
{
    _segments[segment].label = label;
    describe();
    update();
}

bool SegmentedControl::hasLabel(const QString &label) const
{
    return std::any_of(_segments.begin(), _segments.end(),
                       [&label](const Segment &segment) { return segment.label == label; });
}

QString SegmentedControl::segmentToolTip(int segment) const
{
    return _segments.value(segment).toolTip;
}

void SegmentedControl::setSegmentToolTip(int segment, const QString &text)
{
    _segments[segment].toolTip = text;
}

void SegmentedControl::setSelectedSegment(int segment)
{
    _selected = std::clamp(segment, -1, segmentCount() - 1);
    _keyboard = _selected;
    describe();
    update();
}

void SegmentedControl::describe()
{
    setAccessibleDescription(FileName::shown(label(hasFocus() ? _keyboard : _selected)));
}

QSize SegmentedControl::sizeHint() const
{
    const int margin = _controlSize == ControlSize::Mini ? 4 : 10;
    return { 200, fontMetrics().height() + margin };
}

QSize SegmentedControl::minimumSizeHint() const
{
    return { 80, sizeHint().height() };
}

QList<int> SegmentedControl::widths() const
{
    QList<int> widths;
    int excess = -width();
    for (const Segment &segment : _segments) {
        widths.append(fontMetrics().horizontalAdvance(FileName::shown(segment.label))
                      + 2 * Padding);
        excess += widths.last();
    }
    const int narrow = fontMetrics().horizontalAdvance(QChar(0x2026)) + 2 * Padding;
    const auto shrink = [&](int segment, int least) {
        const int taken = std::clamp(widths[segment] - least, 0, std::max(excess, 0));
        widths[segment] -= taken;
        excess -= taken;
    };
    for (const int least : { narrow, 0 }) {
        for (int segment = 0; segment < _selected; ++segment)
            shrink(segment, least);
        for (int segment = segmentCount() - 1; segment > _selected; --segment)
            shrink(segment, least);
    }
    if (_selected >= 0)
        shrink(_selected, 0);
    return widths;
}

QRect SegmentedControl::segmentRect(int segment) const
{
    const QList<int> all = widths();
    int x = 0;
    for (int before = 0; before < segment; ++before)
        x += all[before];
    const QRect area(x, 0, all.value(segment), height());
    return QStyle::visualRect(layoutDirection(), rect(), area);
}

int SegmentedControl::segmentAt(const QPoint &position) const
{
    for (int segment = 0; segment < segmentCount(); ++segment)
        if (segmentRect(segment).contains(position))
            return segment;
    return -1;
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor line = mixed(palette().color(QPalette::Window),
                              palette().color(QPalette::WindowText), hasFocus() ? 0.5 : 0.22);
    const QPainterPath frame =
        bezierPathWithRoundRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
    painter.fillPath(frame, palette().color(QPalette::Base));
    painter.save();
    painter.setClipPath(frame);
    for (int segment = 0; segment < segmentCount(); ++segment) {
        const QRect area = segmentRect(segment);
        if (area.isEmpty())
            continue;
        paintSegment(painter, segment, area);
        painter.setPen(line);
        const double edge = (isRightToLeft() ? area.left() : area.right()) + 0.5;
        painter.drawLine(QPointF(edge, 0), QPointF(edge, height()));
    }
    painter.restore();
    const QColor ring = palette().color(QPalette::Highlight);
    painter.setPen(hasFocus() ? QPen(ring, 2) : QPen(line, 1));
    painter.drawPath(frame);
}

void SegmentedControl::paintSegment(QPainter &painter, int segment, const QRect &area) const
{
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor accent = palette().color(QPalette::Highlight);
    if (segment == _selected)
        painter.fillRect(area, mixed(base, accent, segment == _pressed ? 0.5 : 0.28));
    else if (segment == _pressed)
        painter.fillRect(area, mixed(base, text, 0.2));
    else if (segment == _hovered)
        painter.fillRect(area, mixed(base, text, 0.08));
    if (hasFocus() && segment == _keyboard) {
        painter.setPen(QPen(accent, 2));
        painter.drawRect(QRectF(area).adjusted(2, 2, -3, -2));
    }
    // The folders further on, by which the user came, stand back.
    painter.setPen(segment > _selected ? mixed(base, text, 0.6) : text);
    const int padding = std::min(Padding, area.width() / 4);
    const QRect inner = area.adjusted(padding, 0, -padding, 0);
    painter.drawText(inner, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     fontMetrics().elidedText(FileName::shown(_segments[segment].label),
                                              Qt::ElideMiddle, inner.width() + 1));
}

void SegmentedControl::choose(int segment)
{
    if (segment < 0 || segment >= segmentCount())
        return;
    setSelectedSegment(segment);
    Q_EMIT clicked();
}

void SegmentedControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    _pressed = segmentAt(event->position().toPoint());
    update();
}

void SegmentedControl::mouseMoveEvent(QMouseEvent *event)
{
    const int hovered = segmentAt(event->position().toPoint());
    if (hovered != _hovered) {
        _hovered = hovered;
        update();
    }
}

void SegmentedControl::mouseReleaseEvent(QMouseEvent *event)
{
    const int pressed = std::exchange(_pressed, -1);
    update();
    if (event->button() == Qt::LeftButton && pressed == segmentAt(event->position().toPoint()))
        choose(pressed);
}

void SegmentedControl::keyPressEvent(QKeyEvent *event)
{
    const int forward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int back = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    if (event->key() == back)
        _keyboard = std::max(_keyboard - 1, 0);
    else if (event->key() == forward)
        _keyboard = std::min(_keyboard + 1, segmentCount() - 1);
    else if (event->key() == Qt::Key_Home)
        _keyboard = 0;
    else if (event->key() == Qt::Key_End)
        _keyboard = segmentCount() - 1;
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
             || event->key() == Qt::Key_Space) {
        choose(_keyboard);
        Q_EMIT escaped();
    } else if (event->key() == Qt::Key_Escape)
        Q_EMIT escaped();
    else
        return QWidget::keyPressEvent(event);
    describe();
    update();
}

void SegmentedControl::focusInEvent(QFocusEvent *event)
{
    _keyboard = _selected;
    describe();
    QWidget::focusInEvent(event);
}

void SegmentedControl::leaveEvent(QEvent *)
{
    _hovered = -1;
    update();
}

void SegmentedControl::contextMenuEvent(QContextMenuEvent *event)
{
    Q_EMIT contextMenuAsked(event->globalPos());
}

bool SegmentedControl::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int segment = segmentAt(help->pos());
        const QString text = FileName::shown(segmentToolTip(segment)).toHtmlEscaped();
        if (text.isEmpty())
            QToolTip::hideText();
        else // as rich text, so that a name with tags in it cannot become one
            QToolTip::showText(help->globalPos(), QStringLiteral("<span>%1</span>").arg(text), this,
                               segmentRect(segment));
        return true;
    }
    return QWidget::event(event);
}
