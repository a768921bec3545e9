#include "widgets/SegmentedControl.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "widgets/Colors.h"
#include "widgets/MenuText.h"
#include "widgets/Mnemonics.h"
#include "widgets/RoundRect.h"
#include "widgets/SegmentsForReaders.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr int Padding = 8; // left and right of a label
constexpr double Radius = 5;
const QString Ellipsis = QChar(0x2026);

void paintRing(QPainter &painter, const QRect &area, const QColor &color)
{
    painter.setPen(QPen(color, 2));
    painter.drawRect(QRectF(area).adjusted(2, 2, -3, -2));
}

} // namespace

SegmentedControl::SegmentedControl(QWidget *parent, Meaning meaning)
    : QWidget(parent)
    , _meaning(meaning)
{
    exposeSegments();
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
    if (count == segmentCount())
        return;
    _segments.resize(count);
    _selected = std::min(_selected, count - 1);
    _keyboard = std::min(_keyboard, count - 1);
    changed();
    QAccessibleEvent others(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&others);
}

QString SegmentedControl::label(int segment) const
{
    return _segments.value(segment).label;
}

void SegmentedControl::setLabel(int segment, const QString &label)
{
    if (_segments[segment].label == label)
        return;
    _segments[segment].label = label;
    changed();
    if (segment == _selected)
        describe();
    QAccessibleEvent named(this, QAccessible::NameChanged);
    named.setChild(segment);
    QAccessible::updateAccessibility(&named);
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
    changed();
    describe();
}

void SegmentedControl::changed()
{
    _widths.reset();
    update();
}

void SegmentedControl::describe()
{
    const int segment = hasFocus() ? _keyboard : _selected;
    setAccessibleDescription(FileName::shown(isFolded(segment) ? pathTo(segment) : label(segment)));
    if (!hasFocus())
        return;
    QAccessibleEvent moved(this, QAccessible::Focus);
    moved.setChild(isFolded(segment) ? segmentCount() : segment); // the fold is the last child
    QAccessible::updateAccessibility(&moved);
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

const SegmentWidths &SegmentedControl::widths() const
{
    // By the width itself: a control that is not shown hears of another one late.
    if (_widths && _widths->room == width())
        return *_widths;
    const auto widthOf = [this](const QString &text) {
        return fontMetrics().horizontalAdvance(text) + 2 * Padding;
    };
    QList<int> wanted;
    for (const Segment &segment : _segments)
        wanted.append(widthOf(FileName::shown(segment.label)));
    _widths = SegmentWidths(width(), wanted, _selected, widthOf(Ellipsis));
    return *_widths;
}

QRect SegmentedControl::visualArea(int x, int width) const
{
    return QStyle::visualRect(layoutDirection(), rect(), QRect(x, 0, width, height()));
}

QRect SegmentedControl::segmentRect(int segment) const
{
    return visualArea(widths().starts.value(segment), widths().ofSegments.value(segment));
}

QRect SegmentedControl::foldRect() const
{
    return visualArea(widths().ofSegments.value(0), widths().fold);
}

QString SegmentedControl::pathTo(int segment) const
{
    QStringList labels;
    for (int i = 0; i <= segment; ++i)
        labels.append(label(i));
    return PathText::fromComponents(labels);
}

void SegmentedControl::openFold()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int segment = 1; isFolded(segment); ++segment)
        connect(menu->addAction(menuText(label(segment))), &QAction::triggered, this,
                [this, segment] {
                    choose(segment);
                    if (hasFocus())
                        Q_EMIT escaped();
                });
    markWhenShown(*menu);
    menu->popup(mapToGlobal(foldRect().bottomLeft()));
}

int SegmentedControl::neighbour(int step) const
{
    int segment = _keyboard + step;
    if (isFolded(segment) && isFolded(_keyboard))
        segment = step < 0 ? 0 : widths().folded + 1;
    else if (isFolded(segment))
        segment = widths().folded;
    return std::clamp(segment, 0, segmentCount() - 1);
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
    const QColor line = faintLine(palette().color(QPalette::Window),
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
        paintEdge(painter, area, line);
    }
    if (const QRect area = foldRect(); !area.isEmpty()) {
        paintFold(painter, area);
        paintEdge(painter, area, line);
    }
    painter.restore();
    const QColor ring = palette().color(QPalette::Highlight);
    painter.setPen(hasFocus() ? QPen(ring, 2) : QPen(line, 1));
    painter.drawPath(frame);
}

void SegmentedControl::paintEdge(QPainter &painter, const QRect &area, const QColor &color) const
{
    const double edge = (isRightToLeft() ? area.left() : area.right()) + 0.5;
    painter.setPen(color);
    painter.drawLine(QPointF(edge, 0), QPointF(edge, height()));
}

void SegmentedControl::paintSegment(QPainter &painter, int segment, const QRect &area) const
{
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor accent = palette().color(QPalette::Highlight);
    const bool isFull = segment == _selected && isHighContrast();
    if (isFull)
        painter.fillRect(area, accent);
    else if (segment == _selected)
        painter.fillRect(area, mixed(base, accent, segment == _pressed ? 0.5 : 0.28));
    else if (segment == _pressed)
        painter.fillRect(area, mixed(base, text, 0.2));
    else if (segment == _hovered)
        painter.fillRect(area, mixed(base, text, 0.08));
    if (hasFocus() && segment == _keyboard)
        paintRing(painter, area, isFull ? base : accent);
    // The folders further on, by which the user came, stand back.
    const bool standsBack = _meaning == Meaning::Path && segment > _selected;
    painter.setPen(isFull           ? palette().color(QPalette::HighlightedText)
                       : standsBack ? faintText(base, text, 0.6)
                                    : text);
    paintLabel(painter, area, FileName::shown(_segments[segment].label));
}

void SegmentedControl::paintFold(QPainter &painter, const QRect &area) const
{
    if (area.contains(mapFromGlobal(QCursor::pos())) && underMouse())
        painter.fillRect(
            area, mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.08));
    if (hasFocus() && isFolded(_keyboard))
        paintRing(painter, area, palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::Text));
    paintLabel(painter, area, Ellipsis);
}

void SegmentedControl::paintLabel(QPainter &painter, const QRect &area, const QString &text) const
{
    const int padding = std::min(Padding, area.width() / 4);
    const QRect inner = area.adjusted(padding, 0, -padding, 0);
    painter.drawText(inner, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     fontMetrics().elidedText(text, Qt::ElideMiddle, inner.width() + 1));
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
    if (foldRect().contains(event->position().toPoint()))
        return openFold();
    _pressed = segmentAt(event->position().toPoint());
    update();
}

void SegmentedControl::mouseMoveEvent(QMouseEvent *event)
{
    _hovered = segmentAt(event->position().toPoint());
    update();
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
    const bool chooses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
        || event->key() == Qt::Key_Space;
    if (event->key() == back)
        _keyboard = neighbour(-1);
    else if (event->key() == forward)
        _keyboard = neighbour(1);
    else if (event->key() == Qt::Key_Home)
        _keyboard = 0;
    else if (event->key() == Qt::Key_End)
        _keyboard = segmentCount() - 1;
    else if (chooses && isFolded(_keyboard))
        openFold();
    else if (chooses) {
        choose(_keyboard);
        Q_EMIT escaped();
    } else if (event->key() == Qt::Key_Escape)
        Q_EMIT escaped();
    else
        return QWidget::keyPressEvent(event);
    describe();
    update();
}

void SegmentedControl::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        changed();
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
        const bool onFold = foldRect().contains(help->pos());
        const QString tip = onFold ? pathTo(_selected) : segmentToolTip(segment);
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), plainToolTip(FileName::shown(tip)), this,
                               onFold ? foldRect() : segmentRect(segment));
        return true;
    }
    return QWidget::event(event);
}
