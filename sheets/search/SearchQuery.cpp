#include "sheets/search/SearchQuery.h"

using namespace Qt::StringLiterals;

QString searchQuery(const QString &text, const SearchOptions &options)
{
    QString modifiers;
    if (options.caseInsensitive)
        modifiers += u'c';
    if (options.insensitiveToDiacriticalMarks)
        modifiers += u'd';
    if (options.wordBased)
        modifiers += u'w';
    const QString value = u" == \""_s + text + u'"' + modifiers;
    return options.searchContent ? u'*' + value + u" || kMDItemTextContent"_s + value
                                 : u'*' + value;
}
