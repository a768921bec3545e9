#pragma once

#include "search/QueryText.h"

#include <QByteArray>

#include <vector>

// Whether a value is one that a query asks for; linear in its length, whatever is asked. Any
// thread, one at a time: copies have memory of their own.
class TextMatch final {
public:
    explicit TextMatch(const QueryText &query);

    bool matches(QByteArrayView utf8);

    // What is asked for has no characters that count: nothing is found.
    bool isEmpty() const { return _text.isEmpty(); }
    bool asksForWords() const { return !_words.empty(); }

private:
    bool hasPart() const;
    bool hasWords() const;
    bool endsInCharacter(QByteArrayView rest) const;

    Folding::Steps _steps;
    QByteArray _text; // folded; the words point into it
    std::vector<QByteArrayView> _words; // empty: any part of the value is looked for
    std::vector<size_t> _again; // where to go on in the words when one of them is not the next
    QByteArrayView _rarest; // the longest of them: most values have no such word
    QByteArray _value; // folded
};
