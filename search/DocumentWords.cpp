#include "search/DocumentWords.h"

#include "files/Folding.h"
#include "search/SearchedAttributes.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr size_t FirstSlots = 4096;
// A long text is taken in pieces of about this size, so that its folded copy stays small.
constexpr qsizetype Piece = 64 * 1024; // bytes

// What a byte of ASCII is in a folded word; 0: it stands between words.
constexpr std::array<char, 128> Plain = [] {
    std::array<char, 128> plain {};
    for (size_t letter = 'a'; letter <= 'z'; ++letter)
        plain[letter] = plain[letter - 'a' + 'A'] = char(letter);
    for (size_t digit = '0'; digit <= '9'; ++digit)
        plain[digit] = char(digit);
    return plain;
}();

bool isSpace(char byte)
{
    return quint8(byte) <= ' ';
}

quint32 hashOf(QByteArrayView word)
{
    quint64 hash = quint64(word.size()) * 0x9E3779B97F4A7C15U;
    const char *at = word.data();
    qsizetype left = word.size();
    for (; left > 0; at += 8, left -= 8) {
        quint64 part = 0;
        std::memcpy(&part, at, size_t(std::min<qsizetype>(left, 8)));
        hash = (hash ^ part) * 0xBF58476D1CE4E5B9U;
        hash ^= hash >> 31;
    }
    return quint32(hash ^ (hash >> 32));
}

} // namespace

QByteArrayView DocumentWords::ofText(QByteArrayView utf8)
{
    begin();
    add(utf8);
    return _words;
}

QByteArrayView DocumentWords::ofAttributes(const QList<MetadataAttribute> &attributes)
{
    begin();
    eachSearchedText(attributes, [this](const QString &text) { add(text.toUtf8()); });
    return _words;
}

void DocumentWords::begin()
{
    // Slots of other documents are free, without being cleared.
    if (_slots.empty() || ++_document == 0) {
        _slots.assign(FirstSlots, Slot {});
        _document = 1;
    }
    _used = 0;
    _words.resize(0);
}

// No word and no composition goes over a white space. So most of a text, which is plain ASCII, is
// folded and split here in one go; what stands between two white spaces and is more than that takes
// the long way, with its neighbors of the same sort.
void DocumentWords::add(QByteArrayView utf8)
{
    const char *at = utf8.data();
    const char *const end = at + utf8.size();
    char word[Folding::LongestIndexedWord];
    while (at != end) {
        const char *start = at; // of what stands between two white spaces
        qsizetype size = 0;
        for (; at != end && quint8(*at) < 0x80; ++at) {
            if (const char plain = Plain[quint8(*at)]) {
                if (size < Folding::LongestIndexedWord)
                    word[size] = plain;
                ++size;
                continue;
            }
            if (size != 0)
                insert({ word, std::min(size, Folding::LongestIndexedWord) });
            size = 0;
            if (isSpace(*at))
                start = at + 1;
        }
        if (at == end) {
            if (size != 0)
                insert({ word, std::min(size, Folding::LongestIndexedWord) });
            return;
        }
        // Up to a white space that plain text follows, or far enough.
        bool isPlain = false;
        while (at != end && !(isPlain && isSpace(*at)) && !(at - start > Piece && isSpace(*at))) {
            if (isSpace(*at))
                isPlain = true;
            else if (quint8(*at) >= 0x80)
                isPlain = false;
            ++at;
        }
        addFolded({ start, at - start });
    }
}

void DocumentWords::addFolded(QByteArrayView utf8)
{
    Folding::fold(utf8, Folding::All, _folded);
    Folding::Words words(_folded);
    QByteArrayView word;
    while (words.next(word))
        insert(Folding::indexedWord(word));
}

void DocumentWords::insert(QByteArrayView word)
{
    const quint32 hash = hashOf(word);
    const size_t mask = _slots.size() - 1;
    size_t at = hash & mask;
    for (; _slots[at].document == _document; at = (at + 1) & mask) {
        const Slot &slot = _slots[at];
        if (slot.hash == hash && slot.size == word.size()
            && std::memcmp(_words.constData() + slot.start, word.data(), slot.size) == 0)
            return;
    }
    _slots[at] = { _document, hash, quint32(_words.size()), quint32(word.size()) };
    _words.append(word).append(' ');
    if (++_used * 2 > _slots.size())
        grow();
}

void DocumentWords::grow()
{
    std::vector<Slot> larger(_slots.size() * 2);
    const size_t mask = larger.size() - 1;
    for (const Slot &slot : _slots) {
        if (slot.document != _document)
            continue;
        size_t at = slot.hash & mask;
        while (larger[at].document == _document)
            at = (at + 1) & mask;
        larger[at] = slot;
    }
    _slots = std::move(larger);
}
