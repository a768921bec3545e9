#pragma once

#include <QByteArray>
#include <QFlags>

// What makes two texts the same to somebody who searches, and what a word is: said once, for the
// index, the query, the walk and the filter of a pane. Texts are UTF-8; bytes that are none stay as
// they are and separate words. Each function is pure and may be called on any thread.
//
// In any case composed and decomposed forms are the same (a file name that comes from elsewhere has
// its umlauts in two parts), and what is never seen (soft hyphens, joiners, marks of direction,
// variation selectors) is left out.
// Case: the simple folding of Unicode, character by character: "ẞ" is "ß" but not "ss".
// Accents: combining marks go, those that stand for vowels or sounds of their own excepted (Indic,
// Thai, kana). ß is "ss", æ "ae", œ "oe", þ "th"; ø, ł, đ, ð, ħ, ŧ, ı and the like are the letter
// without its stroke or dot, so the Turkish İ and ı are both i. Ligatures, wide and raised letters
// and digits are the plain ones.
namespace Folding {

enum Step : quint8 { Exact = 0, Case = 1, Accents = 2 };
Q_DECLARE_FLAGS(Steps, Step)
Q_DECLARE_OPERATORS_FOR_FLAGS(Steps)

constexpr Steps All { Case | Accents }; // as the words of the index are

// `folded` is replaced; its memory is used again.
void fold(QByteArrayView utf8, Steps steps, QByteArray &folded);
QByteArray folded(QByteArrayView utf8, Steps steps);

// Whether a combining mark stands there: what is in front of it is then no whole character.
bool startsWithMark(QByteArrayView folded);

// The words of a folded text in their order. A word is a run of letters, digits and their marks;
// all else separates, "_", "." and "-" too. Where a script puts no spaces between words (Chinese,
// Japanese, Thai and so on) each character is a word, and so is a pictograph.
class Words {
public:
    explicit Words(QByteArrayView folded)
        : _at(folded.data())
        , _end(folded.data() + folded.size())
    {
    }
    bool next(QByteArrayView &word); // false at the end

private:
    const char *_at;
    const char *_end;
};

// The index has the beginning of a longer word only. Few words are: check sums fit in.
constexpr qsizetype LongestIndexedWord = 80; // bytes
QByteArrayView indexedWord(QByteArrayView word);

} // namespace Folding
