#pragma once

#include <QString>

// What a metadata search looks at, and how.
struct SearchOptions {
    bool searchContent = true;
    bool caseInsensitive = true;
    bool insensitiveToDiacriticalMarks = true;
    bool wordBased = true;
};

// The query for a text, which stands in it as it was typed, its quotes not escaped.
QString searchQuery(const QString &text, const SearchOptions &options);
