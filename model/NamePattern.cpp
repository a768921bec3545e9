#include "model/NamePattern.h"

#include "files/FileName.h"
#include "files/FoldingTables.h"
#include "files/Utf8.h"

#include <algorithm>

namespace {

constexpr size_t None = size_t(-1);
constexpr char32_t OddByte = 0xDC00; // and the byte: it is no part of a character

char32_t asciiFolded(unsigned char byte, Folding::Steps steps)
{
    return steps.testFlag(Folding::Case) && byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

} // namespace

NamePattern::NamePattern(const QString &text, Folding::Steps steps)
    : _steps(steps)
{
    QString letters;
    const auto endLetters = [&] {
        addLetters(letters);
        letters.clear();
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == u'*') {
            endLetters();
            addAny();
        } else if (text[at] == u'?') {
            endLetters();
            _parts.push_back({ Kind::One });
        } else if (text[at] == u'[' && text.indexOf(u']', at + 2) > 0) {
            endLetters();
            at = addSet(text, at);
        } else {
            letters += text[at];
        }
    }
    endLetters();
    _least = size_t(
        std::ranges::count_if(_parts, [](const Part &part) { return part.kind != Kind::Any; }));
}

void NamePattern::addAny()
{
    if (_parts.empty() || _parts.back().kind != Kind::Any)
        _parts.push_back({ Kind::Any });
}

void NamePattern::addLetters(const QString &text)
{
    Units units;
    read(FileName::toBytes(text), units);
    for (const char32_t unit : units)
        _parts.push_back({ Kind::Letter, unit & ~Continues });
}

// Answers where the set ends. A "]" or "-" that comes first is meant itself.
qsizetype NamePattern::addSet(const QString &text, qsizetype open)
{
    Part set { Kind::Set };
    qsizetype at = open + 1;
    set.excludes = text[at] == u'!' || text[at] == u'^';
    if (set.excludes && text.indexOf(u']', at + 2) > 0)
        ++at;
    else
        set.excludes = false;
    const qsizetype close = text.indexOf(u']', at + 1);
    Units members;
    // The hyphens stay what they are.
    read(FileName::toBytes(text.sliced(at, close - at)), members);
    std::erase_if(members, [](char32_t unit) { return unit & Continues; });
    for (size_t i = 0; i < members.size(); ++i) {
        const bool isRange = i + 2 < members.size() && members[i + 1] == U'-';
        set.ranges.push_back({ members[i], members[isRange ? i + 2 : i] });
        i += isRange ? 2 : 0;
    }
    _parts.push_back(std::move(set));
    return close;
}

void NamePattern::read(QByteArrayView utf8, Units &units) const
{
    units.clear();
    const char *const end = utf8.data() + utf8.size();
    for (const char *at = utf8.data(); at < end;) {
        if (static_cast<signed char>(*at) >= 0) {
            units.push_back(asciiFolded(static_cast<unsigned char>(*at++), _steps));
            continue;
        }
        char32_t character = 0;
        const int length = Utf8::decode(at, end - at, character);
        if (length == 0) {
            units.push_back(OddByte + static_cast<unsigned char>(*at++));
            continue;
        }
        at += length;
        const QByteArrayView folded = FoldingTables::folded(character, _steps);
        bool belongs = false;
        for (qsizetype i = 0; i < folded.size(); belongs = true) {
            char32_t unit = 0;
            i += Utf8::decode(folded.data() + i, folded.size() - i, unit);
            belongs |= FoldingTables::wordClass(unit) == FoldingTables::WordClass::Mark;
            units.push_back(belongs && !units.empty() ? unit | Continues : unit);
        }
    }
}

size_t NamePattern::nextCharacter(size_t at) const
{
    do
        ++at;
    while (at < _units.size() && _units[at] & Continues);
    return at;
}

// Behind what the part takes; None where it does not fit.
size_t NamePattern::taken(const Part &part, size_t at) const
{
    const char32_t unit = _units[at] & ~Continues;
    if (part.kind == Kind::Letter)
        return unit == part.letter ? at + 1 : None;
    if (part.kind == Kind::Any || _units[at] & Continues)
        return None;
    const bool isIn = std::ranges::any_of(part.ranges, [unit](const Range &range) {
        return unit >= range.first && unit <= range.last;
    });
    return part.kind == Kind::One || isIn != part.excludes ? nextCharacter(at) : None;
}

bool NamePattern::matches(QByteArrayView utf8)
{
    read(utf8, _units);
    if (_units.size() < _least)
        return false;
    // Only the last "any text" can be too short: those before it are best as short as they are.
    size_t afterAny = None;
    size_t anyEnds = 0;
    size_t part = 0;
    for (size_t at = 0; at < _units.size();) {
        const bool isAny = part < _parts.size() && _parts[part].kind == Kind::Any;
        if (isAny && !(_units[at] & Continues)) {
            afterAny = ++part;
            anyEnds = at;
            continue;
        }
        const size_t next = part < _parts.size() ? taken(_parts[part], at) : None;
        if (next != None) {
            ++part;
            at = next;
        } else if (afterAny != None) {
            part = afterAny;
            at = anyEnds = nextCharacter(anyEnds);
        } else {
            return false;
        }
    }
    if (part < _parts.size() && _parts[part].kind == Kind::Any)
        ++part;
    return part == _parts.size();
}
