#pragma once

#include <QList>

// Row numbers of a pane, ascending, each once.
using RowSet = QList<int>;

inline constexpr int NoRow = -1;
inline constexpr int ParentRow = 0; // ".." heads every listing, also at the root
inline constexpr int FirstItemRow = 1;

// What a pane's table shows of its rows: the selected ones, the one that the keyboard is on, and
// the first in view.
struct ShownRows {
    RowSet selected;
    int current = NoRow;
    int first = NoRow;
    int newest = NoRow; // of the selected ones, the one selected last
    bool marked = false; // they were marked one by one: the keyboard leaves them as they are
};

// Whether the row is an item's: no command touches "..".
constexpr bool isItemRow(int row)
{
    return row >= FirstItemRow;
}
