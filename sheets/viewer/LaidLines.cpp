#include "sheets/viewer/LaidLines.h"

#include <algorithm>

namespace {

constexpr double Endless = 1e6; // pixels

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c.isSurrogate() || c.isMark();
}

} // namespace

void LaidLines::setStretch(const Stretch &stretch)
{
    _stretch = stretch;
    _lines.clear();
}

void LaidLines::setForm(const TextForm &form)
{
    _form = form;
    _stretch = {};
    _lines.clear();
}

void LaidLines::setLook(const Look &look)
{
    if (look == _look)
        return;
    _look = look;
    _lines.clear();
}

const LaidLines::Line &LaidLines::line(int number)
{
    std::unique_ptr<Line> &laid = _lines[number];
    if (laid)
        return *laid;
    laid = std::make_unique<Line>();
    const qint64 start = _stretch.start(number);
    const QByteArrayView bytes = _stretch.bytes(number);
    const qint64 size = _stretch.fileSize();
    laid->shown = _form.asBytes ? ShownLine::ofBytes(bytes, start, ShownLine::offsetDigits(size))
                                : ShownLine::ofText(bytes, start, _form.encoding);
    QTextOption option(Qt::AlignLeft);
    option.setTextDirection(Qt::LeftToRight); // else a line could begin at the far end
    const bool wraps = _look.wrapWidth > 0 && !_form.asBytes;
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    option.setTabStopDistance(_look.tabWidth);
    QTextLayout &layout = laid->layout;
    layout.setFont(_look.font);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.setText(laid->shown.text);
    layout.beginLayout();
    for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
        row.setLineWidth(wraps ? _look.wrapWidth : Endless);
        row.setPosition({ 0, double(row.lineNumber()) * _look.rowHeight });
        laid->width = std::max(laid->width, row.naturalTextWidth());
    }
    layout.endLayout();
    return *laid;
}

int LaidLines::rowCount(int number)
{
    return std::max(line(number).layout.lineCount(), 1);
}

int LaidLines::move(Place &place, int rows)
{
    while (rows < 0) {
        if (place.row > 0) {
            const int step = std::min(place.row, -rows);
            place.row -= step;
            rows += step;
        } else if (place.line > 0) {
            --place.line;
            place.row = rowCount(place.line) - 1;
            ++rows;
        } else {
            break;
        }
    }
    while (rows > 0) {
        const int below = rowCount(place.line) - 1 - place.row;
        if (below > 0) {
            const int step = std::min(below, rows);
            place.row += step;
            rows -= step;
        } else if (place.line + 1 < _stretch.lineCount()) {
            place = { place.line + 1, 0 };
            --rows;
        } else {
            break;
        }
    }
    return rows;
}

LaidLines::Place LaidLines::last()
{
    const int number = std::max(_stretch.lineCount() - 1, 0);
    return { number, isEmpty() ? 0 : rowCount(number) - 1 };
}

LaidLines::Place LaidLines::placeOf(qint64 offset)
{
    const int number = std::max(_stretch.lineOf(offset), 0);
    const Line &laid = line(number);
    const int unit = laid.shown.unitOf(int(offset - _stretch.start(number)));
    const QTextLine row = laid.layout.lineForTextPosition(unit);
    return { number, row.isValid() ? row.lineNumber() : 0 };
}

qint64 LaidLines::startOf(const Place &place)
{
    const Line &laid = line(place.line);
    const QTextLine row = rowAt(place);
    return _stretch.start(place.line) + (row.isValid() ? laid.shown.byteOf(row.textStart()) : 0);
}

qint64 LaidLines::endOf(const Place &place)
{
    const Line &laid = line(place.line);
    const QTextLine row = rowAt(place);
    return _stretch.start(place.line)
        + laid.shown.byteOf(row.isValid() ? row.textStart() + row.textLength() : 0);
}

qint64 LaidLines::offsetAt(const Place &place, double x)
{
    const QTextLine row = rowAt(place);
    const int unit = row.isValid() ? row.xToCursor(x) : 0;
    return _stretch.start(place.line) + line(place.line).shown.byteOf(unit);
}

double LaidLines::xOf(const Place &place, qint64 offset)
{
    const QTextLine row = rowAt(place);
    const int unit = line(place.line).shown.unitOf(int(offset - _stretch.start(place.line)));
    return row.isValid() ? row.cursorToX(unit) : 0;
}

QString LaidLines::textOf(const Place &place)
{
    const QTextLine row = rowAt(place);
    return row.isValid() ? line(place.line).shown.text.mid(row.textStart(), row.textLength())
                         : QString();
}

qint64 LaidLines::besides(qint64 offset, int step)
{
    const int number = _stretch.lineOf(offset);
    if (number < 0)
        return offset;
    const qint64 start = _stretch.start(number);
    if (step < 0 && offset <= start) // the end of the line before
        return number == 0 ? offset
                           : _stretch.start(number - 1) + line(number - 1).shown.bytes.back();
    std::vector<int> places = line(number).shown.bytes;
    std::ranges::sort(places); // of rows of bytes they come twice
    const int byte = int(offset - start);
    if (step > 0) {
        const auto next = std::ranges::upper_bound(places, byte);
        return next == places.end() ? _stretch.end(number) : start + *next;
    }
    const auto next = std::ranges::lower_bound(places, byte);
    return next == places.begin() ? start : start + std::max(*std::prev(next), 0);
}

LaidLines::Word LaidLines::wordAt(const Place &place, qint64 offset)
{
    const qint64 start = _stretch.start(place.line);
    if (_form.asBytes)
        return { offset, std::min(offset + 1, _stretch.end(place.line)) };
    const ShownLine &shown = line(place.line).shown;
    int from = shown.unitOf(int(offset - start));
    int to = from;
    while (from > 0 && isOfWord(shown.text[from - 1]))
        --from;
    while (to < shown.text.size() && isOfWord(shown.text[to]))
        ++to;
    return { start + shown.byteOf(from), start + shown.byteOf(to) };
}
