#include "model/NameFilter.h"

#include "files/FileName.h"

#include <cstring>

namespace {

QString withoutLineEnds(QStringView text)
{
    const auto isLineEnd = [](QChar c) { return c == u'\n' || c == u'\r'; };
    while (!text.isEmpty() && isLineEnd(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isLineEnd(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

NameFilter::NameFilter(const QString &text)
    : _text(withoutLineEnds(text))
    , _part(Folding::folded(FileName::toBytes(_text), Folding::All))
    , _likeShown(_text.contains(QChar::ReplacementCharacter) || _text.contains(u'\\'))
{
    if (NamePattern::isPattern(_text))
        _pattern.emplace(_text, Folding::All);
}

bool NameFilter::narrows(const NameFilter &other) const
{
    return !other.isOn()
        || (!_pattern && !other._pattern && !_likeShown && !other._likeShown
            && _part.contains(other._part));
}

bool NameFilter::matches(QByteArrayView name)
{
    if (_pattern)
        return _pattern->matches(name);
    const auto hasPart = [this](QByteArrayView utf8) {
        Folding::fold(utf8, Folding::All, _folded);
        return ::memmem(_folded.constData(), size_t(_folded.size()), _part.constData(),
                        size_t(_part.size()));
    };
    return hasPart(name)
        || (_likeShown && hasPart(FileName::shown(FileName::fromBytes(name)).toUtf8()));
}
