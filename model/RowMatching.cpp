#include "model/RowMatching.h"

#include "files/FileName.h"
#include "model/FileQueries.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool beginsWithLetter(const QString &name, const QString &letter)
{
    return !letter.isEmpty() && (name.startsWith(letter) || name.startsWith(letter.toUpper()));
}

bool contains(const QString &field, const QString &term)
{
    return FileQueries::isStringInSubstring(field, term, Qt::CaseInsensitive);
}

} // namespace

int RowMatching::startRow(int selectedRow, qsizetype count)
{
    return !isItemRow(selectedRow) || selectedRow == count ? ParentRow : selectedRow + 1;
}

int RowMatching::nextLetterItem(const QString &letter, const Listing &rows, int selectedRow)
{
    for (int row = startRow(selectedRow, rows.size()); row < rows.size(); ++row)
        if (beginsWithLetter(rows[row].name(), letter))
            return row;
    return indexOfFirstFoundLetterItem(letter, rows);
}

int RowMatching::indexOfFirstFoundLetterItem(const QString &letter, const Listing &rows)
{
    for (int row = 0; row < rows.size(); ++row)
        if (beginsWithLetter(rows[row].name(), letter))
            return row;
    return NoRow;
}

int RowMatching::nextFoundItem(const QString &term, const Listing &rows, int selectedRow,
                               const DateToText &dateText)
{
    for (int row = startRow(selectedRow, rows.size()); row < rows.size(); ++row) {
        const Entry entry = rows[row];
        if (contains(entry.name(), term) || contains(entry.size(), term)
            || contains(dateText(entry.date()), term) || contains(entry.type(), term))
            return row;
    }
    return indexOfFirstFoundStringItem(term, rows);
}

int RowMatching::indexOfFirstFoundStringItem(const QString &term, const Listing &rows)
{
    for (int row = 0; row < rows.size(); ++row)
        if (contains(rows[row].name(), term))
            return row;
    return NoRow;
}

bool RowMatching::matches(const QString &field, const ExpandSelection &request)
{
    const auto sensitivity = request.caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    switch (request.method) {
    case MatchMethod::Contains:
        return FileQueries::isStringInSubstring(field, request.text, sensitivity);
    case MatchMethod::BeginsWith:
        return field.startsWith(request.text, sensitivity);
    case MatchMethod::EndsWith:
        return field.endsWith(request.text, sensitivity);
    case MatchMethod::Equals:
        return field.compare(request.text, sensitivity) == 0;
    }
    return false;
}

NamePattern RowMatching::patternOf(const ExpandSelection &request)
{
    QString pattern = request.text;
    if (request.method == MatchMethod::BeginsWith)
        pattern += u'*';
    else if (request.method == MatchMethod::EndsWith)
        pattern.prepend(u'*');
    return NamePattern(pattern, request.caseSensitive ? Folding::Exact : Folding::Case);
}

RowSet RowMatching::matchingRows(const Listing &rows, const ExpandSelection &request,
                                 const DateToText &dateText)
{
    const auto field = [&](const Entry &entry) {
        switch (request.target) {
        case MatchTarget::Name:
            return entry.name();
        case MatchTarget::Size:
            return entry.size();
        case MatchTarget::Date:
            return dateText(entry.date());
        case MatchTarget::Type:
            return entry.type();
        }
        return QString();
    };
    std::optional<NamePattern> pattern;
    if (NamePattern::isPattern(request.text))
        pattern = patternOf(request);
    RowSet found;
    for (int row = FirstItemRow; row < rows.size(); ++row) {
        const QString text = field(rows[row]);
        // A name may have a star of its own.
        if (matches(text, request) || (pattern && pattern->matches(FileName::toBytes(text))))
            found.append(row);
    }
    return found;
}

QSet<QByteArrayView> RowMatching::namesOf(const Listing &rows)
{
    // Names as bytes: the listing holds them, and nothing is made of them.
    QSet<QByteArrayView> names;
    names.reserve(rows.size());
    for (qsizetype row = FirstItemRow; row < rows.size(); ++row)
        names.insert(rows[row].nameBytes());
    return names;
}

bool RowMatching::arrayContainsEntry(const QSet<QByteArrayView> &names, const Entry &entry,
                                     QLatin1StringView searchObject)
{
    return searchObject == "name"_L1 && names.contains(entry.nameBytes());
}

RowSet RowMatching::rowsOfSameName(const Listing &rows, const Listing &others)
{
    const QSet<QByteArrayView> names = namesOf(others);
    RowSet found;
    for (int row = FirstItemRow; row < rows.size(); ++row)
        if (arrayContainsEntry(names, rows[row], "name"_L1))
            found.append(row);
    return found;
}

RowMatching::EqualRows RowMatching::equalRows(const Listing &rows, const Listing &others)
{
    QHash<QByteArrayView, int> rowOfName;
    rowOfName.reserve(others.size());
    for (int row = FirstItemRow; row < others.size(); ++row)
        rowOfName.insert(others[row].nameBytes(), row);
    EqualRows equal;
    for (int row = FirstItemRow; row < rows.size(); ++row) {
        const Entry entry = rows[row];
        const auto other = rowOfName.constFind(entry.nameBytes());
        if (other == rowOfName.constEnd() || !entry.readsLike(others[*other]))
            continue;
        equal.here.append(row);
        equal.there.append(*other);
    }
    std::ranges::sort(equal.there);
    return equal;
}
