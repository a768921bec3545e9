#pragma once

#include "files/Folding.h"

// Character by character, made from Qt's tables page by page when a page is first needed.
namespace FoldingTables {

enum class WordClass : quint8 {
    Separator,
    Part, // a letter or digit
    Mark, // belongs to what is in front of it
    Alone, // a word by itself
};

// The text that a character becomes; it stays where it is to the end of the program.
QByteArrayView folded(char32_t character, Folding::Steps steps);
WordClass wordClass(char32_t character);

} // namespace FoldingTables
