#include "model/CurrentRows.h"

#include <QSet>

#include <algorithm>
#include <iterator>

RowSet currentRows(const RowSet &rows, const Listing &seen, const Listing &now)
{
    return currentRows(ShownRows { .selected = rows }, seen, now).selected;
}

ShownRows currentRows(const ShownRows &shown, const Listing &seen, const Listing &now)
{
    const auto within = [&now](int row) { return std::min(row, int(now.size()) - 1); };
    ShownRows found { {}, within(shown.current), within(shown.first), NoRow, shown.marked };
    if (seen.generation() == now.generation()) {
        std::ranges::copy_if(shown.selected, std::back_inserter(found.selected),
                             [&now](int row) { return now.holds(row); });
        found.newest = shown.newest;
        return found;
    }
    // Items of another folder have other paths, and ".." is its own.
    if (seen.folder() != now.folder() || now.isEmpty())
        return found;
    // Names, as the listing that was seen keeps them; empty for no item.
    const auto nameOf = [&seen](int row) {
        return isItemRow(row) && seen.holds(row) ? seen[row].nameBytes() : QByteArrayView();
    };
    QByteArrayView current = nameOf(shown.current);
    QByteArrayView first = nameOf(shown.first);
    QByteArrayView newest = nameOf(shown.newest);
    QSet<QByteArrayView> wanted;
    wanted.reserve(shown.selected.size());
    for (const int row : shown.selected) {
        if (row == ParentRow)
            found.selected.append(ParentRow);
        else if (const QByteArrayView name = nameOf(row); !name.isEmpty())
            wanted.insert(name);
    }
    const auto takeIf = [](QByteArrayView &sought, QByteArrayView name, int &place, int row) {
        if (!sought.isEmpty() && sought == name) {
            place = row;
            sought = {};
        }
    };
    for (int row = FirstItemRow; row < now.size(); ++row) {
        if (wanted.isEmpty() && current.isEmpty() && first.isEmpty() && newest.isEmpty())
            break;
        const QByteArrayView name = now[row].nameBytes();
        if (wanted.remove(name))
            found.selected.append(row);
        takeIf(current, name, found.current, row);
        takeIf(first, name, found.first, row);
        takeIf(newest, name, found.newest, row);
    }
    return found;
}
