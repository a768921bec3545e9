#include "texts/TextLines.h"

#include <cstring>

namespace {

// The place of the next one of a character below 0x80, or -1.
qsizetype find(QByteArrayView bytes, qsizetype from, char character, const TextEncoding &encoding)
{
    const int unit = encoding.unit();
    while (from < bytes.size()) {
        const void *found =
            std::memchr(bytes.data() + from, character, std::size_t(bytes.size() - from));
        if (!found)
            return -1;
        const qsizetype at = static_cast<const char *>(found) - bytes.data();
        if (unit == 1)
            return at;
        const qsizetype start = at - at % unit;
        if (start + unit <= bytes.size()
            && encoding.first(bytes.sliced(start, unit)).code == char32_t(character))
            return start;
        from = at + 1;
    }
    return -1;
}

} // namespace

TextLines::End TextLines::endIn(QByteArrayView start, const TextEncoding &encoding)
{
    return find(start, 0, '\n', encoding) < 0 && find(start, 0, '\r', encoding) >= 0
        ? End::Return
        : End::LineFeed;
}

std::vector<qint64> TextLines::starts(QByteArrayView bytes, qint64 offset,
                                      const TextEncoding &encoding, End end)
{
    std::vector<qint64> starts;
    if (offset == 0 && !bytes.isEmpty())
        starts.push_back(0);
    const qsizetype size = bytes.size();
    const int unit = encoding.unit();
    qsizetype lastEnd = -1; // what ended a line last
    qsizetype next = qsizetype(Length - offset % Length); // where one may be cut
    for (qsizetype from = 0; from < size;) {
        const qsizetype found = find(bytes, from, char(end), encoding);
        const qsizetype ending = found < 0 ? size : found;
        for (; next < ending; next += Length) {
            if (next - Length <= lastEnd)
                continue;
            const qsizetype cut =
                next + encoding.bytesToBoundary(bytes.first(next), bytes.sliced(next));
            if (cut < ending)
                starts.push_back(offset + cut);
        }
        if (found < 0)
            break;
        lastEnd = found;
        from = found + unit;
        if (next <= found)
            next += Length;
        if (from < size)
            starts.push_back(offset + from);
    }
    return starts;
}
