#include "model/RowChanges.h"

#include <algorithm>

int RowChanges::rowNow(int row, bool *gone) const
{
    if (gone)
        *gone = false;
    if (row < 0)
        return row;
    if (const auto found = moved.constFind(row); found != moved.constEnd())
        return *found;
    const auto removedHere = std::ranges::lower_bound(removed, row);
    if (gone)
        *gone = removedHere != removed.end() && *removedHere == row;
    const int kept = row - int(removedHere - removed.begin());
    // Those inserted before it: the one with number i among them has as many kept rows before
    // itself as its row less i.
    int first = 0;
    int last = int(inserted.size());
    while (first < last) {
        const int middle = (first + last) / 2;
        if (inserted[middle] - middle <= kept)
            first = middle + 1;
        else
            last = middle;
    }
    return kept + first;
}

ShownRows RowChanges::rowsNow(const ShownRows &shown) const
{
    ShownRows now = shown;
    now.current = rowNow(shown.current);
    now.first = rowNow(shown.first);
    bool newestIsGone = false;
    now.newest = rowNow(shown.newest, &newestIsGone);
    if (newestIsGone)
        now.newest = NoRow;
    now.selected.clear();
    for (const int row : shown.selected) {
        bool gone = false;
        const int at = rowNow(row, &gone);
        if (!gone)
            now.selected.append(at);
    }
    if (!moved.isEmpty())
        std::ranges::sort(now.selected);
    return now;
}

bool RowChanges::touch(const RowSet &earlier) const
{
    return std::ranges::any_of(earlier, [this](int row) {
        return std::ranges::binary_search(removed, row)
            || std::ranges::binary_search(changed, rowNow(row));
    });
}

QList<RowRange> rangesOf(const RowSet &rows)
{
    QList<RowRange> ranges;
    for (const int row : rows) {
        if (!ranges.isEmpty() && ranges.last().last + 1 == row)
            ranges.last().last = row;
        else
            ranges.append({ row, row });
    }
    return ranges;
}
