#include "sheets/viewer/TextArea.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyleHints>

// What a person does in it: keys, wheel and mouse.

namespace {

constexpr int WheelStep = 120; // as the mouse has it
constexpr int OutsideInterval = 40; // milliseconds
constexpr double HitHeight = 0.3; // of the view, where what is found is shown

} // namespace

LaidLines::Place TextArea::placeAt(int y)
{
    LaidLines::Place place = *_top;
    _lines.move(place, std::max(y, 0) / _rowHeight);
    return place;
}

qint64 TextArea::offsetAt(const QPoint &position)
{
    return _lines.offsetAt(placeAt(position.y()),
                           position.x() - Margin + horizontalScrollBar()->value());
}

void TextArea::select(qint64 anchor, qint64 position)
{
    _selection = { anchor, position };
    makeSeen(_selection.start());
    viewport()->update();
    Q_EMIT viewChanged();
}

void TextArea::selectAll()
{
    _selection = { 0, fileSize() };
    viewport()->update();
    Q_EMIT viewChanged();
}

void TextArea::makeSeen(qint64 offset)
{
    if (!_top || _lines.isEmpty() || _lines.stretch().lineOf(offset) < 0)
        return scrollTo(offset, -int(visibleRows() * HitHeight));
    const LaidLines::Place place = _lines.placeOf(offset);
    LaidLines::Place bottom = *_top;
    _lines.move(bottom, visibleRows() - 1);
    if (place < *_top || bottom < place)
        scrollTo(offset, -int(visibleRows() * HitHeight));
    QScrollBar &across = *horizontalScrollBar();
    const int x = int(_lines.xOf(place, offset));
    if (across.maximum() > 0 || x > viewport()->width()) {
        const int room = viewport()->width() - 2 * Margin;
        across.setMaximum(std::max(across.maximum(), x + room / 2));
        if (x < across.value() || x > across.value() + room)
            across.setValue(std::max(x - room / 2, 0));
    }
}

void TextArea::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().x() != 0 || event->modifiers() & Qt::ShiftModifier) {
        QApplication::sendEvent(horizontalScrollBar(), event);
        return;
    }
    _wheel += event->angleDelta().y() * QGuiApplication::styleHints()->wheelScrollLines();
    scrollBy(-_wheel / WheelStep);
    _wheel %= WheelStep;
    event->accept();
}

void TextArea::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        Q_EMIT copyAsked();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (!(event->modifiers() & Qt::AltModifier) && _top
             && (event->modifiers() & Qt::ShiftModifier ? extendByKey(*event)
                                                        : scrollByKey(*event)))
        event->accept();
    else
        event->ignore();
}

bool TextArea::scrollByKey(const QKeyEvent &event)
{
    const int page = std::max(visibleRows() - 1, 1);
    QScrollBar &across = *horizontalScrollBar();
    switch (event.key()) {
    case Qt::Key_Up:
        scrollBy(-1);
        return true;
    case Qt::Key_Down:
        scrollBy(1);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_Backspace:
        scrollBy(-page);
        return true;
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        scrollBy(page);
        return true;
    case Qt::Key_Home:
        across.setValue(0);
        scrollTo(0);
        return true;
    case Qt::Key_End:
        scrollToEnd();
        return true;
    case Qt::Key_Left:
        across.triggerAction(QAbstractSlider::SliderSingleStepSub);
        return true;
    case Qt::Key_Right:
        across.triggerAction(QAbstractSlider::SliderSingleStepAdd);
        return true;
    default:
        return false;
    }
}

// With Shift the keys move the end of what is selected; without any, from the first row seen.
bool TextArea::extendByKey(const QKeyEvent &event)
{
    if (_lines.isEmpty())
        return false;
    if (_selection.isEmpty())
        _selection = { topOffset(), topOffset() };
    const bool isFar = event.modifiers() & Qt::ControlModifier;
    const qint64 from = _selection.position;
    if (_lines.stretch().lineOf(from) < 0) {
        scrollTo(from); // there first
        return true;
    }
    LaidLines::Place place = _lines.placeOf(from);
    const auto byRows = [&](int rows) {
        const double x = _lines.xOf(place, from);
        _lines.move(place, rows);
        return _lines.offsetAt(place, x);
    };
    const int page = std::max(visibleRows() - 1, 1);
    switch (event.key()) {
    case Qt::Key_Left:
        _selection.position = _lines.besides(from, -1);
        break;
    case Qt::Key_Right:
        _selection.position = _lines.besides(from, 1);
        break;
    case Qt::Key_Up:
        _selection.position = byRows(-1);
        break;
    case Qt::Key_Down:
        _selection.position = byRows(1);
        break;
    case Qt::Key_PageUp:
        _selection.position = byRows(-page);
        break;
    case Qt::Key_PageDown:
        _selection.position = byRows(page);
        break;
    case Qt::Key_Home:
        _selection.position = isFar ? 0 : _lines.startOf(place);
        break;
    case Qt::Key_End:
        _selection.position = isFar ? fileSize() : _lines.endOf(place);
        break;
    default:
        return false;
    }
    makeSeen(_selection.position);
    viewport()->update();
    Q_EMIT viewChanged();
    return true;
}

void TextArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !_top || _lines.isEmpty())
        return;
    _selects = true;
    if (!(event->modifiers() & Qt::ShiftModifier))
        _selection.anchor = offsetAt(event->position().toPoint());
    extendTo(event->position().toPoint());
}

void TextArea::extendTo(const QPoint &position)
{
    if (!_top || _lines.isEmpty())
        return;
    _selection.position = offsetAt(position);
    viewport()->update();
    Q_EMIT viewChanged();
}

void TextArea::mouseMoveEvent(QMouseEvent *event)
{
    if (!_selects)
        return;
    _mouse = event->position().toPoint();
    if (viewport()->rect().contains(_mouse))
        _outside.stop();
    else if (!_outside.isActive())
        _outside.start(OutsideInterval, this);
    extendTo(_mouse);
}

void TextArea::mouseReleaseEvent(QMouseEvent *)
{
    _selects = false;
    _outside.stop();
}

void TextArea::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !_top || _lines.isEmpty())
        return;
    const QPoint position = event->position().toPoint();
    const auto word = _lines.wordAt(placeAt(position.y()), offsetAt(position));
    select(word.start, word.end);
}

// The farther the mouse is, the faster.
void TextArea::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != _outside.timerId())
        return QAbstractScrollArea::timerEvent(event);
    const int above = std::min(_mouse.y(), 0);
    const int below = std::max(_mouse.y() - viewport()->height(), 0);
    scrollBy((above + below) / _rowHeight + (below > 0) - (above < 0));
    extendTo({ _mouse.x(), std::clamp(_mouse.y(), 0, viewport()->height() - 1) });
}
