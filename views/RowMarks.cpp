#include "views/RowMarks.h"

#include <algorithm>

ShownRows RowMarks::afterMarking(const ShownRows &shown, int rowCount)
{
    const int row = std::max(shown.current, ParentRow);
    ShownRows after = shown;
    after.first = NoRow;
    after.current = std::min(row + 1, rowCount - 1);
    RowSet &rows = after.selected;
    rows.removeOne(ParentRow);
    // The one row that the arrows select as they go is not marked yet.
    const bool isUnmarked = !shown.marked && rows == RowSet { row };
    if (isItemRow(row) && !isUnmarked) {
        const auto place = std::ranges::lower_bound(rows, row);
        if (place != rows.end() && *place == row)
            rows.erase(place);
        else
            rows.insert(place, row);
    }
    if (rows.contains(row))
        after.newest = row;
    after.marked = isItemRow(row) ? !rows.isEmpty() : shown.marked || !rows.isEmpty();
    if (!after.marked) {
        rows = { after.current };
        after.newest = after.current;
    }
    return after;
}

ShownRows RowMarks::afterInverting(const ShownRows &shown, int rowCount)
{
    ShownRows after { {}, shown.current };
    auto selected = shown.selected.begin();
    for (int row = ParentRow; row < rowCount; ++row) {
        if (selected != shown.selected.end() && *selected == row)
            ++selected;
        else if (isItemRow(row))
            after.selected.append(row);
    }
    after.newest = after.selected.isEmpty() ? NoRow : after.selected.last();
    after.marked = !after.selected.isEmpty();
    return after;
}
