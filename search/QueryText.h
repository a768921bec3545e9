#pragma once

#include "files/Folding.h"
#include "platform/MetadataIndex.h"

#include <QByteArray>

#include <optional>

// What a query asks for. The whole language is
//     * == "TEXT"M        and        * == "TEXT"M || kMDItemTextContent == "TEXT"M
// where M is any of the letters c, d and w in this order, the same in both places. The text is not
// escaped, so it may hold all of that itself; given beside the query it is the text of it in one
// way only.
//   *                   the name that is shown, and what was read in an item or written on it by a
//                       person, as a text (title, authors, keywords, comment, tags...), but its
//                       content; not what name and status tell (kind, owner)
//   kMDItemTextContent  the words inside of it
//   c                   upper and lower case are the same
//   d                   accents make no difference
//   w                   whole words in their order, the last one also by its beginning; without it
//                       any part of a value
// The words are looked for inside of one value, one author for example. A text without words (only
// spaces, only punctuation) is looked for as a part of a value with w too.
struct QueryText {
    QByteArray text; // UTF-8
    Folding::Steps steps;
    bool words = false;
    bool content = false;

    // Nothing for a query that is not of the language, or of another text than the one given.
    static std::optional<QueryText> read(const MetadataSearch &search);
};
