#pragma once

#include "model/RowSet.h"

#include <QHash>

// From the rows of a listing to those of the same folder a little later.
struct RowChanges {
    RowSet removed; // of the earlier listing
    RowSet inserted; // of the later one
    RowSet changed; // of the later one: other content in its place, or nearly
    QHash<int, int> moved; // of those removed the ones that are among the inserted, by their rows

    bool isEmpty() const { return removed.isEmpty() && inserted.isEmpty() && changed.isEmpty(); }
    // Where an earlier row is now; in place of one that is gone the next, and `gone` tells.
    int rowNow(int row, bool *gone = nullptr) const;
    ShownRows rowsNow(const ShownRows &shown) const;
    // Whether one of the rows is gone, or shows something else.
    bool touch(const RowSet &earlier) const;
};

// Rows that follow each other, as one.
struct RowRange {
    int first;
    int last;
};
QList<RowRange> rangesOf(const RowSet &rows);
