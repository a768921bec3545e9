#include "model/RowsNow.h"

#include <QHash>

#include <algorithm>

RowSet rowsNow(const RowSet &rows, const Listing &seen, const Listing &now)
{
    RowSet found;
    if (seen.generation() == now.generation()) {
        for (const int row : rows) {
            if (now.holds(row))
                found.append(row);
        }
        return found;
    }
    QHash<QString, int> rowOfPath;
    for (int row = 0; row < now.size(); ++row)
        rowOfPath.insert(now[row].path(), row);
    for (const int row : rows) {
        if (const int again = seen.holds(row) ? rowOfPath.value(seen[row].path(), -1) : -1;
            again >= 0)
            found.append(again);
    }
    std::ranges::sort(found);
    return found;
}
