#include "model/CurrentRows.h"

#include <QSet>

#include <algorithm>

RowSet currentRows(const RowSet &rows, const Listing &seen, const Listing &now)
{
    RowSet found;
    if (seen.generation() == now.generation()) {
        for (const int row : rows) {
            if (now.holds(row))
                found.append(row);
        }
        return found;
    }
    // Items of another folder have other paths, and ".." is its own.
    if (seen.folder() != now.folder() || now.isEmpty())
        return found;
    QSet<QByteArrayView> wanted; // names, as the listing that was seen keeps them
    for (const int row : rows) {
        if (row == ParentRow)
            found.append(ParentRow);
        else if (seen.holds(row))
            wanted.insert(seen[row].nameBytes());
    }
    for (int row = FirstItemRow; row < now.size() && !wanted.isEmpty(); ++row)
        if (wanted.remove(now[row].nameBytes()))
            found.append(row);
    return found;
}

ShownRows currentRows(const ShownRows &shown, const Listing &seen, const Listing &now)
{
    const auto oneRow = [&](int row) {
        const RowSet found = currentRows(RowSet { row }, seen, now);
        return found.isEmpty() ? std::min(row, int(now.size()) - 1) : found.first();
    };
    return { currentRows(shown.selected, seen, now), oneRow(shown.current), oneRow(shown.first) };
}
