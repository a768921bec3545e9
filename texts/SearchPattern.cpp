#include "texts/SearchPattern.h"

#include <QChar>

#include <algorithm>
#include <cstring>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int MostBytesOfCharacter = 4;

bool isSmall(char32_t code)
{
    return code < 0x80;
}

// How common a byte is, roughly, from blanks and the letters of most languages down to what seldom
// stands in a text.
int commonness(quint8 byte)
{
    constexpr QByteArrayView common = " etaoinsrhldcumfpgwybv\n0.1,2-3k/:_T4A5SE6I";
    if (byte == 0)
        return 100;
    if (const auto at = common.indexOf(char(byte)); at >= 0)
        return 90 - int(at);
    return byte >= 0x80 ? 30 : 20;
}

} // namespace

SearchPattern::SearchPattern(How how, QByteArray bytes, const TextEncoding &encoding)
    : _how(how)
    , _bytes(std::move(bytes))
    , _encoding(encoding)
    , _longest(_bytes.size())
    , _isOfZeros(_bytes.count('\0') == _bytes.size())
{
    const auto rare = std::ranges::min_element(_bytes, {}, [](char c) { return commonness(c); });
    _rarest = rare - _bytes.cbegin();
}

std::optional<SearchPattern> SearchPattern::ofText(const QString &text,
                                                   const TextEncoding &encoding,
                                                   Qt::CaseSensitivity sensitivity)
{
    const auto bytes = encoding.encoded(text);
    if (text.isEmpty() || !bytes)
        return {};
    SearchPattern pattern(How::Bytes, *bytes, encoding);
    if (sensitivity == Qt::CaseSensitive)
        return pattern;
    using enum TextEncoding::Form;
    const auto codes = text.toUcs4();
    if (encoding.form() == SingleByte
        || (encoding.form() == Utf8 && std::ranges::all_of(codes, isSmall))) {
        pattern.foldBytes();
        return pattern;
    }
    pattern._how = How::Characters;
    for (const char32_t code : codes)
        pattern._characters.push_back(QChar::toCaseFolded(code));
    pattern._longest = codes.size() * MostBytesOfCharacter;
    return pattern;
}

std::optional<SearchPattern> SearchPattern::ofBytes(const QString &digits)
{
    const QStringList words = digits.split(u' ', Qt::SkipEmptyParts);
    QByteArray bytes;
    for (const QString &word : words) {
        if (word.size() % 2 != 0)
            return {};
        for (qsizetype i = 0; i < word.size(); i += 2) {
            bool isByte = false;
            bytes += char(word.sliced(i, 2).toUInt(&isByte, 16));
            if (!isByte || word[i] == u'+' || word[i] == u'-')
                return {};
        }
    }
    return bytes.isEmpty()
        ? std::nullopt
        : std::optional(SearchPattern(How::Bytes, bytes, TextEncoding::all().constLast()));
}

// Of bytes for one character in all its cases, one stands for them all.
void SearchPattern::foldBytes()
{
    _how = How::FoldedBytes;
    if (_encoding.form() == TextEncoding::Form::Utf8) {
        _bytes = folded(_bytes); // of characters below 0x80 alone
        return;
    }
    std::map<char32_t, char> ones;
    for (int number = 0; number < 256; ++number) {
        const char byte = char(number);
        const char32_t code = _encoding.first({ &byte, 1 }).code;
        const bool isNone = code == QChar::ReplacementCharacter;
        _folding[std::size_t(number)] =
            isNone ? byte : ones.try_emplace(QChar::toCaseFolded(code), byte).first->second;
    }
    _bytes = folded(_bytes);
}

QByteArray SearchPattern::folded(QByteArrayView bytes) const
{
    QByteArray result(bytes.size(), Qt::Uninitialized);
    if (_encoding.form() == TextEncoding::Form::Utf8) { // a sum is quicker than a table
        std::ranges::transform(bytes, result.begin(), [](char byte) {
            return char(byte | (quint8(byte - 'A') < 26 ? 0x20 : 0));
        });
        return result;
    }
    std::ranges::transform(bytes, result.begin(),
                           [this](char byte) { return _folding[quint8(byte)]; });
    return result;
}

std::optional<SearchPattern::Place> SearchPattern::firstIn(QByteArrayView block, qint64 starts,
                                                           qint64 offset) const
{
    return _how == How::FoldedBytes ? next(folded(block), 0, starts, offset)
                                    : next(block, 0, starts, offset);
}

std::optional<SearchPattern::Place> SearchPattern::lastIn(QByteArrayView block, qint64 starts,
                                                          qint64 offset) const
{
    const QByteArray copy = _how == How::FoldedBytes ? folded(block) : QByteArray();
    const QByteArrayView bytes = copy.isEmpty() ? block : QByteArrayView(copy);
    std::optional<Place> last;
    for (auto place = next(bytes, 0, starts, offset); place;
         place = next(bytes, place->offset + 1, starts, offset))
        last = place;
    return last;
}

std::optional<SearchPattern::Place> SearchPattern::next(QByteArrayView block, qint64 from,
                                                        qint64 starts, qint64 offset) const
{
    const int unit = _encoding.unit();
    if (_how == How::Characters) {
        const qint64 aligned = from + (unit - (offset + from) % unit) % unit;
        for (qint64 at = aligned; at < starts;) {
            if (const qint64 length = matchAt(block.sliced(at)))
                return Place { at, length };
            at += _encoding.first(block.sliced(at)).length;
        }
        return {};
    }
    for (qint64 at = from; (at = nextBytes(block, at, starts)) >= 0; ++at)
        if ((offset + at) % unit == 0)
            return Place { at, _bytes.size() };
    return {};
}

// The rarest byte is looked for with the fastest that there is; where that is not rare at all, the
// library's search is faster.
qint64 SearchPattern::nextBytes(QByteArrayView block, qint64 from, qint64 starts) const
{
    const qint64 size = _bytes.size();
    const qint64 end = std::min<qint64>(block.size() - size + 1, starts); // of the starts
    qint64 misses = 0;
    for (qint64 at = from; at < end;) {
        if (misses > 16 && misses * 48 > at - from) {
            const void *found = ::memmem(block.data() + at, std::size_t(end - at + size - 1),
                                         _bytes.constData(), std::size_t(size));
            return found ? static_cast<const char *>(found) - block.data() : -1;
        }
        const void *found =
            std::memchr(block.data() + at + _rarest, _bytes[_rarest], std::size_t(end - at));
        if (!found)
            return -1;
        const qint64 start = static_cast<const char *>(found) - block.data() - _rarest;
        if (std::memcmp(block.data() + start, _bytes.constData(), std::size_t(size)) == 0)
            return start;
        ++misses;
        at = start + 1;
    }
    return -1;
}

qint64 SearchPattern::matchAt(QByteArrayView bytes) const
{
    qint64 at = 0;
    for (const char32_t wanted : _characters) {
        if (at >= bytes.size())
            return 0;
        const auto [code, length] = _encoding.first(bytes.sliced(at));
        if (QChar::toCaseFolded(code) != wanted)
            return 0;
        at += length;
    }
    return at;
}
