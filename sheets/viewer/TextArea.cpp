#include "sheets/viewer/TextArea.h"

#include "base/Localized.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int TabLetters = 8;
constexpr double FontSize = 10; // points
constexpr qint64 MostSteps = 1 << 30; // of the scroll bar
constexpr int LeastRows = 20;
constexpr int Columns = 100;

// Painted, it would be told as a frame around nothing.
QAccessibleInterface *asDocument(const QString &, QObject *object)
{
    auto *area = qobject_cast<TextArea *>(object);
    return area ? new QAccessibleWidget(area, QAccessible::Document) : nullptr;
}

} // namespace

TextArea::TextArea(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    QAccessible::installFactory(asDocument); // once, however often it is said
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(FontSize);
    setFont(fixed);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // else text would be laid out for its going
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Base);
    setMinimumSize(40 * fontMetrics().averageCharWidth(), 8 * fontMetrics().lineSpacing());
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &TextArea::barMoved);
    layOut();
}

void TextArea::layOut()
{
    const QFontMetricsF metrics(font());
    _rowHeight = std::max(int(std::ceil(metrics.lineSpacing())), 1);
    const double width = std::max(viewport()->width() - 2 * Margin, 1);
    const qint64 top = topOffset();
    _lines.setLook(
        { font(), _rowHeight, _wraps ? width : 0, TabLetters * metrics.horizontalAdvance(u' ') });
    if (!_top)
        return;
    _top = _lines.isEmpty() ? LaidLines::Place {} : _lines.placeOf(top);
    if (!_wanted)
        _wanted = { top, 0 };
    settle();
}

void TextArea::setForm(const TextForm &form)
{
    if (form == _lines.form())
        return;
    if (_top && !_wanted)
        _wanted = { topOffset(), 0 };
    _top.reset();
    _lines.setForm(form);
    // What is on its way has the form before.
    _asked.reset();
    _toAsk.reset();
    if (_wanted)
        want(_wanted->offset);
}

void TextArea::setWraps(bool wraps)
{
    _wraps = wraps;
    horizontalScrollBar()->setValue(0);
    layOut();
}

void TextArea::showMessage(const QString &text)
{
    _message = text;
    setAccessibleDescription(text);
    viewport()->setCursor(Qt::ArrowCursor);
    viewport()->update();
}

int TextArea::visibleRows() const
{
    return std::max(viewport()->height() / _rowHeight, 1);
}

void TextArea::want(qint64 offset)
{
    if (_asked) {
        _toAsk = offset;
        return;
    }
    _asked = offset;
    const int rows = std::max(3 * visibleRows(), LeastRows);
    Q_EMIT stretchWanted(offset, rows, rows);
}

void TextArea::takeStretch(const Stretch &stretch)
{
    _asked.reset();
    _fileSize = stretch.fileSize();
    if (const auto next = std::exchange(_toAsk, std::nullopt))
        want(*next);
    // A page on the way that nobody wants any more takes no place from the one that is seen.
    const qint64 place = _wanted ? _wanted->offset : topOffset();
    if (_top && _asked && stretch.lineOf(place) < 0)
        return;
    if (!_wanted)
        _wanted = { place, 0 };
    _lines.setStretch(stretch);
    _top = LaidLines::Place {};
    settle();
}

void TextArea::settle()
{
    if (!_wanted || !_top)
        return;
    if (_lines.isEmpty()) {
        if (_asked)
            return;
        _wanted.reset();
        return place({});
    }
    const Stretch &stretch = _lines.stretch();
    if (stretch.lineOf(_wanted->offset) < 0)
        return want(_wanted->offset);
    LaidLines::Place top = _lines.placeOf(_wanted->offset);
    const int left = _lines.move(top, _wanted->rows);
    const bool canGoOn = left < 0 ? !stretch.isAtStart() : left > 0 && !stretch.isAtEnd();
    if (canGoOn) {
        _wanted = { _lines.startOf(top), left };
        want(_wanted->offset);
        return place(top);
    }
    _wanted.reset();
    place(top);
    // What is near is there before it is scrolled to.
    const int rows = visibleRows();
    const bool isNearStart = _top->line < rows && !stretch.isAtStart();
    const bool isNearEnd = stretch.lineCount() - _top->line < 2 * rows && !stretch.isAtEnd();
    if (isNearStart || isNearEnd)
        want(topOffset());
}

void TextArea::place(LaidLines::Place top)
{
    const Stretch &stretch = _lines.stretch();
    if (!_lines.isEmpty() && stretch.isAtEnd()) {
        LaidLines::Place last = _lines.last();
        _lines.move(last, 1 - visibleRows());
        top = std::min(top, last);
    }
    _top = top;
    showBars();
    viewport()->update();
    Q_EMIT viewChanged();
}

bool TextArea::isAtEnd()
{
    if (_lines.isEmpty())
        return true;
    LaidLines::Place last = *_top;
    return _lines.stretch().isAtEnd()
        && (_lines.move(last, visibleRows() - 1) > 0 || last == _lines.last());
}

void TextArea::showBars()
{
    QScrollBar &bar = *verticalScrollBar();
    const qint64 size = fileSize();
    _shift = 0;
    while (size >> _shift > MostSteps)
        ++_shift;
    double width = 0;
    LaidLines::Place bottom = *_top;
    if (!_lines.isEmpty()) {
        _lines.move(bottom, visibleRows());
        for (int line = _top->line; !_wraps && line <= bottom.line; ++line)
            width = std::max(width, _lines.line(line).width);
    }
    QScrollBar &across = *horizontalScrollBar();
    const int room = viewport()->width();
    const int most = std::max(int(std::ceil(width)) + 2 * Margin - room, across.value());
    across.setRange(0, _wraps ? 0 : std::max(most, 0));
    across.setPageStep(room);
    across.setSingleStep(fontMetrics().averageCharWidth() * 4);
    if (bar.isSliderDown())
        return; // it would move away under the mouse
    const qint64 top = topOffset();
    const qint64 page = _lines.isEmpty() ? 0 : _lines.endOf(bottom) - top;
    const int value = int(top >> _shift);
    const int end = int(std::max<qint64>(size - page, 0) >> _shift);
    bar.setRange(0, isAtEnd() ? value : std::max(end, value + 1));
    bar.setPageStep(int(std::max<qint64>(page >> _shift, 1)));
    bar.setValue(value);
}

void TextArea::barMoved(int action)
{
    QScrollBar &bar = *verticalScrollBar();
    const int page = std::max(visibleRows() - 1, 1);
    switch (action) {
    case QAbstractSlider::SliderMove:
        return bar.sliderPosition() >= bar.maximum()
            ? scrollToEnd()
            : scrollTo(qint64(bar.sliderPosition()) << _shift);
    case QAbstractSlider::SliderToMinimum:
        scrollTo(0);
        break;
    case QAbstractSlider::SliderToMaximum:
        scrollToEnd();
        break;
    case QAbstractSlider::SliderSingleStepAdd:
        scrollBy(1);
        break;
    case QAbstractSlider::SliderSingleStepSub:
        scrollBy(-1);
        break;
    case QAbstractSlider::SliderPageStepAdd:
        scrollBy(page);
        break;
    case QAbstractSlider::SliderPageStepSub:
        scrollBy(-page);
        break;
    default:
        break;
    }
    bar.setSliderPosition(bar.value());
}

void TextArea::scrollTo(qint64 offset, int rows)
{
    _wanted = { offset, rows };
    if (_top)
        settle();
    else
        want(offset);
}

void TextArea::scrollBy(int rows)
{
    if (!_top)
        return;
    const bool wasAtEnd = rows > 0 && isAtEnd();
    if (_wanted)
        _wanted->rows += rows;
    else
        _wanted = { topOffset(), rows };
    settle();
    if (wasAtEnd) // it may have grown
        want(topOffset());
}

void TextArea::scrollToEnd()
{
    _wanted = { std::numeric_limits<qint64>::max(), 1 - visibleRows() };
    want(_wanted->offset);
}

qint64 TextArea::topOffset()
{
    return _top && !_lines.isEmpty() ? _lines.startOf(*_top) : 0;
}

double TextArea::shareShown()
{
    if (fileSize() == 0 || _lines.isEmpty() || isAtEnd())
        return 1;
    LaidLines::Place bottom = *_top;
    _lines.move(bottom, visibleRows() - 1);
    return double(_lines.endOf(bottom)) / double(fileSize());
}

QString TextArea::shownText()
{
    QStringList rows;
    if (!_top || _lines.isEmpty())
        return {};
    LaidLines::Place place = *_top;
    for (int row = 0; row < visibleRows(); ++row) {
        rows.append(_lines.textOf(place));
        if (_lines.move(place, 1) > 0)
            break;
    }
    return rows.join(u'\n');
}

void TextArea::scrollContentsBy(int dx, int)
{
    if (dx != 0)
        viewport()->update();
}

void TextArea::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    layOut();
}

void TextArea::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOut();
}

void TextArea::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QPalette &colors = palette();
    if (!_message.isEmpty() || (_top && _lines.isEmpty())) {
        painter.setPen(colors.color(QPalette::PlaceholderText));
        painter.setFont(QApplication::font());
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         _message.isEmpty() ? localized("This file is empty.") : _message);
        return;
    }
    if (!_top)
        return;
    painter.setPen(colors.color(QPalette::Text));
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    QTextCharFormat chosen;
    chosen.setBackground(colors.color(group, QPalette::Highlight));
    chosen.setForeground(colors.color(group, QPalette::HighlightedText));
    int y = -_top->row * _rowHeight;
    for (int number = _top->line; number < _lines.stretch().lineCount() && y < viewport()->height();
         ++number) {
        const LaidLines::Line &line = _lines.line(number);
        const qint64 start = _lines.stretch().start(number);
        QList<QTextLayout::FormatRange> ranges;
        if (_selection.start() < _lines.stretch().end(number) && _selection.end() > start)
            for (const auto &[from, length] :
                 line.shown.unitsOf(_selection.start() - start, _selection.end() - start))
                ranges.append({ from, length, chosen });
        const QPointF corner(Margin - horizontalScrollBar()->value(), y);
        line.layout.draw(&painter, corner, ranges, event->rect());
        y += _lines.rowCount(number) * _rowHeight;
    }
}
