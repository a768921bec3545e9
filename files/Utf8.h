#pragma once

#include <QtGlobal>

namespace Utf8 {

// The character at the start of the bytes; how long it is, 0 when no well-formed one stands there.
inline int decode(const char *bytes, qsizetype left, char32_t &character)
{
    const auto *s = reinterpret_cast<const unsigned char *>(bytes);
    const auto rest = [&](int index) { return char32_t(s[index] & 0x3F); };
    const auto continues = [&](int length) {
        if (left < length)
            return false;
        for (int i = 1; i < length; ++i) {
            if ((s[i] & 0xC0) != 0x80)
                return false;
        }
        return true;
    };
    if (s[0] < 0x80) {
        character = s[0];
        return 1;
    }
    if (s[0] >= 0xC2 && s[0] <= 0xDF && continues(2)) {
        character = char32_t(s[0] & 0x1F) << 6 | rest(1);
        return 2;
    }
    if (s[0] >= 0xE0 && s[0] <= 0xEF && continues(3)) {
        character = char32_t(s[0] & 0x0F) << 12 | rest(1) << 6 | rest(2);
        return character >= 0x800 && (character < 0xD800 || character > 0xDFFF) ? 3 : 0;
    }
    if (s[0] >= 0xF0 && s[0] <= 0xF4 && continues(4)) {
        character = char32_t(s[0] & 0x07) << 18 | rest(1) << 12 | rest(2) << 6 | rest(3);
        return character >= 0x10000 && character <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

} // namespace Utf8
