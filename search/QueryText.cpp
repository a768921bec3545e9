#include "search/QueryText.h"

#include "files/FileName.h"

using namespace Qt::StringLiterals;

namespace {

// Takes it from the front, when it stands there.
bool take(QStringView &query, QStringView expected)
{
    if (!query.startsWith(expected))
        return false;
    query = query.sliced(expected.size());
    return true;
}

} // namespace

std::optional<QueryText> QueryText::read(const MetadataSearch &search)
{
    const QString value = u" == \""_s + search.text + u'"';
    QStringView query = search.query;
    if (!take(query, u"*") || !take(query, value))
        return std::nullopt;
    QueryText read;
    read.text = FileName::toBytes(search.text);
    const QStringView modifiers = query;
    if (take(query, u"c"))
        read.steps |= Folding::Case;
    if (take(query, u"d"))
        read.steps |= Folding::Accents;
    read.words = take(query, u"w");
    if (query.isEmpty())
        return read;
    const QStringView same = modifiers.first(modifiers.size() - query.size());
    read.content = take(query, u" || kMDItemTextContent") && take(query, value) && take(query, same)
        && query.isEmpty();
    if (!read.content)
        return std::nullopt;
    return read;
}
