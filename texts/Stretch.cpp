#include "texts/Stretch.h"

#include "texts/FileBytes.h"
#include "texts/ShownLine.h"

#include <algorithm>

namespace {

// What is read first: more than most pages need.
constexpr qint64 FirstBefore = 32 << 10;
constexpr qint64 FirstBehind = 64 << 10;
constexpr qint64 Largest = std::max({ FirstBefore, FirstBehind, TextLines::LookBack });
constexpr qint64 Alignment = 4; // of the widest unit

} // namespace

Stretch Stretch::read(const FileBytes &file, const TextForm &form, qint64 offset, int before,
                      int behind)
{
    Stretch stretch;
    stretch._fileSize = file.size();
    const qint64 place = std::clamp<qint64>(offset, 0, stretch._fileSize);
    if (form.asBytes)
        stretch.readRows(file, place, before, behind);
    else
        stretch.readLines(file, form, place, before, behind);
    return stretch;
}

void Stretch::readRows(const FileBytes &file, qint64 offset, int before, int behind)
{
    const qint64 last = std::max<qint64>(_fileSize - 1, 0);
    const qint64 row = std::min(offset, last) / BytesInRow * BytesInRow;
    _offset = std::max<qint64>(row - qint64(before) * BytesInRow, 0);
    const qint64 wanted = row - _offset + qint64(behind + 1) * BytesInRow;
    _bytes = file.read(_offset, wanted, &_error);
    const qint64 end = _offset + _bytes.size();
    if (_bytes.size() < wanted && !_error)
        _fileSize = end;
    for (qint64 start = _offset; start < end; start += BytesInRow)
        _starts.push_back(start);
    if (!_starts.empty())
        _starts.push_back(end);
}

void Stretch::readLines(const FileBytes &file, const TextForm &form, qint64 offset, int before,
                        int behind)
{
    qint64 lengthBefore = std::max(FirstBefore, TextLines::LookBack);
    qint64 lengthBehind = FirstBehind;
    const qint64 mostBefore = (before + 2) * Largest; // more than so many lines take
    const qint64 mostBehind = (behind + 2) * Largest;
    while (true) {
        _offset = std::max<qint64>(offset - lengthBefore, 0) / Alignment * Alignment;
        const qint64 wanted = offset + lengthBehind - _offset;
        _bytes = file.read(_offset, wanted, &_error);
        const qint64 end = _offset + _bytes.size();
        const bool hasEnd = _bytes.size() < wanted;
        if (hasEnd && !_error)
            _fileSize = end;
        _starts = TextLines::starts(_bytes, _offset, form.encoding, form.end);
        if (_offset > 0)
            _starts.erase(_starts.begin(),
                          std::ranges::lower_bound(
                              _starts, _offset + TextLines::LookBack - TextLines::Longest));
        if (hasEnd && !_starts.empty())
            _starts.push_back(end); // else the last line's end is not known, but where it begins
        const auto place = std::ranges::upper_bound(_starts, offset) - _starts.begin();
        const bool hasBefore = place > before || _offset == 0 || lengthBefore == mostBefore;
        const bool hasBehind =
            std::ptrdiff_t(_starts.size()) - place > behind || hasEnd || lengthBehind == mostBehind;
        if (hasBefore && hasBehind)
            return;
        if (!hasBefore)
            lengthBefore = std::min(lengthBefore * 4, mostBefore);
        if (!hasBehind)
            lengthBehind = std::min(lengthBehind * 4, mostBehind);
    }
}

QByteArrayView Stretch::bytes(int line) const
{
    return QByteArrayView(_bytes).sliced(start(line) - _offset, end(line) - start(line));
}

int Stretch::lineOf(qint64 offset) const
{
    if (lineCount() == 0 || offset < _starts.front())
        return -1;
    if (offset >= _starts.back())
        return isAtEnd() ? lineCount() - 1 : -1;
    return int(std::ranges::upper_bound(_starts, offset) - _starts.begin()) - 1;
}
