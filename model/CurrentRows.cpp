#include "model/CurrentRows.h"

#include <QHash>

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
    // ".." carries the path of the listed folder, which is also an item's in the folder above: the
    // one must never become the other.
    QHash<QString, int> rowOfPath;
    for (int row = FirstItemRow; row < now.size(); ++row)
        rowOfPath.insert(now[row].path(), row);
    for (const int row : rows) {
        if (!seen.holds(row))
            continue;
        if (row == ParentRow) {
            if (!now.isEmpty() && seen.folder() == now.folder())
                found.append(ParentRow);
        } else if (const int again = rowOfPath.value(seen[row].path(), NoRow); again != NoRow) {
            found.append(again);
        }
    }
    std::ranges::sort(found);
    return found;
}
