#include "files/Folding.h"

#include "files/FoldingTables.h"
#include "files/Utf8.h"

#include <array>
#include <cstring>

namespace {

using FoldingTables::WordClass;

constexpr quint64 EachByte = 0x0101010101010101;
constexpr quint64 HighBits = 0x80 * EachByte;

// Of eight ASCII characters at once.
quint64 lowered(quint64 eight)
{
    const quint64 fromA = eight + (0x80 - 'A') * EachByte;
    const quint64 pastZ = eight + (0x7F - 'Z') * EachByte;
    return eight | (((fromA ^ pastZ) & HighBits) >> 2);
}

// Copies the ASCII characters at the start and returns how many they are.
qsizetype foldAscii(const char *from, qsizetype size, bool lower, char *to)
{
    qsizetype done = 0;
    for (; done + 8 <= size; done += 8) {
        quint64 eight;
        std::memcpy(&eight, from + done, 8);
        if (eight & HighBits)
            break;
        if (lower)
            eight = lowered(eight);
        std::memcpy(to + done, &eight, 8);
    }
    for (; done < size && static_cast<signed char>(from[done]) >= 0; ++done) {
        const char c = from[done];
        to[done] = lower && c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
    }
    return done;
}

constexpr std::array<WordClass, 128> asciiClasses()
{
    std::array<WordClass, 128> classes {};
    for (int c = 0; c < 128; ++c) {
        const bool part =
            (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        classes[size_t(c)] = part ? WordClass::Part : WordClass::Separator;
    }
    return classes;
}

// Of the character at `at`, whose length is told; of a byte that is none, a separator.
WordClass wordClass(const char *at, const char *end, int &length)
{
    static constexpr std::array<WordClass, 128> Ascii = asciiClasses();
    if (static_cast<signed char>(*at) >= 0) {
        length = 1;
        return Ascii[static_cast<unsigned char>(*at)];
    }
    char32_t character = 0;
    length = Utf8::decode(at, end - at, character);
    if (length == 0) {
        length = 1;
        return WordClass::Separator;
    }
    return FoldingTables::wordClass(character);
}

} // namespace

void Folding::fold(QByteArrayView utf8, Steps steps, QByteArray &folded)
{
    // Twice the size covers nearly all texts; a character of its own that grows more finds room.
    qsizetype room = utf8.size() + 64;
    if (folded.size() < room)
        folded.resize(room);
    room = folded.size();
    char *to = folded.data();
    qsizetype size = 0;
    const char *at = utf8.data();
    const char *const end = at + utf8.size();
    const bool lower = steps.testFlag(Case);
    while (at < end) {
        // What is left always has room if each character takes no more than it had.
        const qsizetype ascii = foldAscii(at, end - at, lower, to + size);
        at += ascii;
        size += ascii;
        while (at < end && static_cast<signed char>(*at) < 0) {
            char32_t character = 0;
            int length = Utf8::decode(at, end - at, character);
            QByteArrayView text(at, 1);
            if (length == 0)
                length = 1;
            else
                text = FoldingTables::folded(character, steps);
            at += length;
            if (size + text.size() + (end - at) > room) {
                room += room / 2 + text.size();
                folded.resize(room);
                to = folded.data();
            }
            std::memcpy(to + size, text.data(), size_t(text.size()));
            size += text.size();
        }
    }
    folded.truncate(size);
}

QByteArray Folding::folded(QByteArrayView utf8, Steps steps)
{
    QByteArray text;
    fold(utf8, steps, text);
    return text;
}

bool Folding::startsWithMark(QByteArrayView folded)
{
    int length = 0;
    return !folded.isEmpty() && wordClass(folded.begin(), folded.end(), length) == WordClass::Mark;
}

bool Folding::Words::next(QByteArrayView &word)
{
    int length = 0;
    WordClass found = WordClass::Separator;
    for (; _at < _end; _at += length) {
        found = wordClass(_at, _end, length);
        if (found != WordClass::Separator)
            break;
    }
    if (_at == _end)
        return false;
    const char *const start = _at;
    const bool alone = found == WordClass::Alone;
    do {
        _at += length;
        if (_at == _end)
            break;
        found = wordClass(_at, _end, length);
    } while (found == WordClass::Mark || (found == WordClass::Part && !alone));
    word = QByteArrayView(start, _at - start);
    return true;
}

QByteArrayView Folding::indexedWord(QByteArrayView word)
{
    if (word.size() <= LongestIndexedWord)
        return word;
    qsizetype size = LongestIndexedWord;
    while ((word[size] & 0xC0) == 0x80) // not in the middle of a character
        --size;
    return word.first(size);
}
