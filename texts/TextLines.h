#pragma once

#include "texts/TextEncoding.h"

#include <vector>

// Where the lines of a text begin, found from the bytes around them alone, and always in the same
// places from wherever one looks. A line that is too long to be shown as one is cut: where, from a
// multiple of `Length` on, nothing ended for as long as that.
namespace TextLines {

inline constexpr qint64 Length = 2048; // bytes; shorter ones are never cut
inline constexpr qint64 Longest = 2 * Length + 8;
// What has to be known before a place, to know the line that it is in.
inline constexpr qint64 LookBack = Longest + Length;

enum class End : char { LineFeed = '\n', Return = '\r' };
// Old texts have a return only.
End endIn(QByteArrayView start, const TextEncoding &encoding);

// The places of a file where lines begin, among `bytes`, which stand at `offset` in it. Those in
// the first LookBack bytes are sure only where that is the start of the file.
std::vector<qint64> starts(QByteArrayView bytes, qint64 offset, const TextEncoding &encoding,
                           End end);

} // namespace TextLines
