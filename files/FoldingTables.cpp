#include "files/FoldingTables.h"

#include <QList>
#include <QString>

#include <array>
#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using FoldingTables::WordClass;

constexpr char32_t PageSize = 256;
constexpr size_t Pages = 0x110000 / PageSize;

struct Replacement {
    char32_t letter;
    QLatin1StringView text;
};

// Letters whose stroke, dot or join is no combining mark to Unicode.
constexpr Replacement Strokes[] {
    { U'ß', "ss"_L1 }, { U'ẞ', "SS"_L1 }, { U'æ', "ae"_L1 }, { U'Æ', "AE"_L1 }, { U'œ', "oe"_L1 },
    { U'Œ', "OE"_L1 }, { U'þ', "th"_L1 }, { U'Þ', "TH"_L1 }, { U'ø', "o"_L1 },  { U'Ø', "O"_L1 },
    { U'ł', "l"_L1 },  { U'Ł', "L"_L1 },  { U'đ', "d"_L1 },  { U'Đ', "D"_L1 },  { U'ð', "d"_L1 },
    { U'Ð', "D"_L1 },  { U'ħ', "h"_L1 },  { U'Ħ', "H"_L1 },  { U'ŧ', "t"_L1 },  { U'Ŧ', "T"_L1 },
    { U'ı', "i"_L1 },  { U'ȷ', "j"_L1 },  { U'ĸ', "k"_L1 },  { U'ŋ', "n"_L1 },  { U'Ŋ', "N"_L1 },
    { U'ƀ', "b"_L1 },  { U'Ƀ', "B"_L1 },  { U'ɨ', "i"_L1 },  { U'Ɨ', "I"_L1 },  { U'ƶ', "z"_L1 },
    { U'Ƶ', "Z"_L1 },
};

bool isIn(char32_t character, char32_t first, char32_t last)
{
    return character >= first && character <= last;
}

bool isNeverSeen(char32_t c)
{
    return c == 0x00AD || c == 0x034F || c == 0x061C || isIn(c, 0x180B, 0x180F)
        || isIn(c, 0x200C, 0x200F) || isIn(c, 0x202A, 0x202E) || isIn(c, 0x2060, 0x2064)
        || isIn(c, 0x2066, 0x206F) || isIn(c, 0xFE00, 0xFE0F) || c == 0xFEFF
        || isIn(c, 0xE0000, 0xE0FFF);
}

bool isWithoutSpaces(char32_t c)
{
    switch (QChar::script(c)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Yi:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
    case QChar::Script_Tangut:
        return true;
    default: // signs of length and of repetition, which several scripts share
        return isIn(c, 0x3005, 0x3007) || isIn(c, 0x3031, 0x3035) || c == 0x30FC || c == 0xFF70;
    }
}

WordClass classOf(char32_t c)
{
    const bool isNarrowSoundMark = isIn(c, 0xFF9E, 0xFF9F); // to Unicode a letter
    if (QChar::isMark(c) || isNarrowSoundMark)
        return WordClass::Mark;
    if (QChar::isLetterOrNumber(c))
        return isWithoutSpaces(c) ? WordClass::Alone : WordClass::Part;
    if (QChar::category(c) == QChar::Symbol_Other && c >= 0x2600)
        return WordClass::Alone;
    return WordClass::Separator;
}

// Those of Latin, Greek, Cyrillic, Hebrew, Arabic and their like, and the Indic dot below; other
// scripts write vowels with theirs.
bool isAccent(char32_t c)
{
    const int order = QChar::combiningClass(c);
    return order == 1 || order == 7 || isIn(char32_t(order), 10, 36) || order >= 200;
}

// The parts of a character, where these are words as it is: so no fraction falls into two numbers,
// and a text has the same words folded or not.
QString takenApart(char32_t c)
{
    QString one = QString::fromUcs4(&c, 1);
    const bool isSpace = QChar::isSpace(c);
    const WordClass kind = classOf(c);
    if (!isSpace && kind == WordClass::Separator)
        return one;
    QString parts = one.normalized(QString::NormalizationForm_KD);
    if (isSpace)
        return parts;
    const QList<uint> letters = parts.toUcs4();
    for (const uint letter : letters) {
        if (classOf(letter) == WordClass::Separator)
            return one;
    }
    return parts;
}

QString withoutAccents(char32_t c)
{
    for (const Replacement &stroke : Strokes) {
        if (stroke.letter == c)
            return stroke.text;
    }
    if (isAccent(c))
        return {};
    return QString::fromUcs4(&c, 1);
}

QByteArray foldedCharacter(char32_t character, Folding::Steps steps)
{
    if (isNeverSeen(character))
        return {};
    QString text = QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_D);
    QString folded;
    const auto each = [&](auto step) {
        folded.clear();
        const QList<uint> letters = text.toUcs4();
        for (const uint letter : letters)
            folded += step(char32_t(letter));
        text = folded;
    };
    if (steps.testFlag(Folding::Accents)) {
        each(takenApart);
        each(withoutAccents);
    }
    if (steps.testFlag(Folding::Case)) {
        each([](char32_t letter) {
            const char32_t lower = QChar::toCaseFolded(letter);
            return QString::fromUcs4(&lower, 1);
        });
    }
    return text.toUtf8();
}

struct FoldedPage {
    std::array<quint16, PageSize + 1> starts {};
    QByteArray text;
};

struct ClassPage {
    std::array<WordClass, PageSize> classes {};
};

void fill(FoldedPage &page, char32_t first, Folding::Steps steps)
{
    for (char32_t i = 0; i < PageSize; ++i) {
        page.starts[i] = quint16(page.text.size());
        if (!QChar::isSurrogate(first + i))
            page.text += foldedCharacter(first + i, steps);
    }
    page.starts[PageSize] = quint16(page.text.size());
}

void fill(ClassPage &page, char32_t first)
{
    for (char32_t i = 0; i < PageSize; ++i)
        page.classes[i] = classOf(first + i);
}

// Two threads may make the same page at once; the first one's stays.
template <typename Page, typename... Rest>
const Page &pageOf(std::array<std::atomic<const Page *>, Pages> &pages, char32_t character,
                   Rest... rest)
{
    std::atomic<const Page *> &place = pages[character / PageSize];
    const Page *page = place.load(std::memory_order_acquire);
    if (page)
        return *page;
    auto made = std::make_unique<Page>();
    fill(*made, character - character % PageSize, rest...);
    if (place.compare_exchange_strong(page, made.get(), std::memory_order_acq_rel))
        page = made.release();
    return *page;
}

} // namespace

QByteArrayView FoldingTables::folded(char32_t character, Folding::Steps steps)
{
    static std::array<std::array<std::atomic<const FoldedPage *>, Pages>, 4> pages {};
    const FoldedPage &page = pageOf(pages[size_t(steps.toInt())], character, steps);
    const char32_t index = character % PageSize;
    return QByteArrayView(page.text).sliced(page.starts[index],
                                            page.starts[index + 1] - page.starts[index]);
}

WordClass FoldingTables::wordClass(char32_t character)
{
    static std::array<std::atomic<const ClassPage *>, Pages> pages {};
    return pageOf(pages, character).classes[character % PageSize];
}
