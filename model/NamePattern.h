#pragma once

#include "files/Folding.h"

#include <QString>

#include <vector>

// A text with wildcards, against the whole of a name: * is any text or none, ? one character,
// [a-c] one of these and [!a-c] one that is none of them. No wildcard takes a character apart, nor
// a letter from its marks. Any thread, one at a time: copies have memory of their own.
class NamePattern final {
public:
    // Whether a text is meant so: brackets alone stand in many names.
    static bool isPattern(const QString &text)
    {
        return text.contains(u'*') || text.contains(u'?');
    }

    NamePattern(const QString &text, Folding::Steps steps);

    // Never more steps than the name's length times the pattern's, of which no more counts than the
    // name is long.
    bool matches(QByteArrayView utf8);

private:
    // A code point, and whether it belongs to the character before it.
    static constexpr char32_t Continues = 0x80000000;
    using Units = std::vector<char32_t>;

    enum class Kind : quint8 { Letter, One, Any, Set };
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Part {
        Kind kind = Kind::Any;
        char32_t letter = 0;
        bool excludes = false; // of a set
        std::vector<Range> ranges {};
    };

    void addLetters(const QString &text);
    qsizetype addSet(const QString &text, qsizetype open);
    void addAny();
    void read(QByteArrayView utf8, Units &units) const;
    size_t nextCharacter(size_t at) const;
    size_t taken(const Part &part, size_t at) const;

    Folding::Steps _steps;
    std::vector<Part> _parts;
    size_t _least = 0; // how many characters a name has at the least
    Units _units; // of the name
};
