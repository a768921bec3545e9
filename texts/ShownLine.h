#pragma once

#include "texts/TextEncoding.h"

#include <algorithm>
#include <vector>

// A line as it is shown, and which byte each part of it stands for. Any thread.
struct ShownLine {
    QString text;
    // Of each unit of `text`: the first byte, counted in the line, or -1 for none; and, last, the
    // end of what is shown of it.
    std::vector<int> bytes;

    // Control characters are shown as escapes, so that none moves anything, but for the tab; what
    // ends the line is not shown. `offset`: of the line in its file.
    static ShownLine ofText(QByteArrayView line, qint64 offset, const TextEncoding &encoding);
    // The offset in the file, the bytes in two digits each, and what they are as letters.
    static ShownLine ofBytes(QByteArrayView row, qint64 offset, int offsetDigits);
    static int offsetDigits(qint64 fileSize);

    // The first unit that stands for the byte, else the end.
    int unitOf(int byte) const;
    // The byte that a unit is at, none of them before the line's.
    int byteOf(int unit) const { return std::max(bytes[std::size_t(unit)], 0); }
    // The units that stand for some of the bytes, as ranges of them.
    struct Units {
        int start;
        int length;
    };
    std::vector<Units> unitsOf(qint64 firstByte, qint64 endByte) const;
};

inline constexpr int BytesInRow = 16;
