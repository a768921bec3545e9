#include "search/TextMatch.h"

#include <algorithm>
#include <cstring>

TextMatch::TextMatch(const QueryText &query)
    : _steps(query.steps)
    , _text(Folding::folded(query.text, query.steps))
{
    if (!query.words)
        return;
    QByteArrayView word;
    for (Folding::Words words(_text); words.next(word);)
        _words.push_back(word);
    if (_words.empty())
        return;
    _rarest = *std::ranges::max_element(_words, {}, &QByteArrayView::size);
    // All but the last are found as a part of a text is: for each of them, how many of the first
    // words stand in front of it.
    _again.resize(_words.size());
    for (size_t i = 1, same = 0; i + 1 < _words.size(); ++i) {
        while (same > 0 && _words[i] != _words[same])
            same = _again[same - 1];
        same += _words[i] == _words[same];
        _again[i] = same;
    }
}

bool TextMatch::matches(QByteArrayView utf8)
{
    if (_text.isEmpty())
        return false;
    Folding::fold(utf8, _steps, _value);
    return _words.empty() ? hasPart() : hasWords();
}

// With accents "u" is not a part of "ü", whose mark may stand by itself.
bool TextMatch::endsInCharacter(QByteArrayView rest) const
{
    return _steps.testFlag(Folding::Accents) || !Folding::startsWithMark(rest);
}

bool TextMatch::hasPart() const
{
    const char *at = _value.constData();
    const char *const end = at + _value.size();
    while ((at = static_cast<const char *>(
                ::memmem(at, size_t(end - at), _text.constData(), size_t(_text.size()))))) {
        const char *const after = at + _text.size();
        if (endsInCharacter({ after, end - after }))
            return true;
        ++at;
    }
    return false;
}

bool TextMatch::hasWords() const
{
    if (!::memmem(_value.constData(), size_t(_value.size()), _rarest.data(),
                  size_t(_rarest.size())))
        return false;
    const size_t whole = _words.size() - 1;
    const QByteArrayView last = _words.back();
    size_t found = 0; // of the whole words, up to here
    QByteArrayView word;
    for (Folding::Words words(_value); words.next(word);) {
        if (found == whole) {
            if (word.startsWith(last) && endsInCharacter(word.sliced(last.size())))
                return true;
            found = whole == 0 ? 0 : _again[whole - 1];
        }
        while (found > 0 && word != _words[found])
            found = _again[found - 1];
        found += whole > 0 && word == _words[found];
    }
    return false;
}
