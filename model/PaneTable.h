#pragma once

#include "model/Listing.h"
#include "model/RowSet.h"
#include "model/Side.h"

// A pane's table as the pane model and the operations use it. Main thread.
class PaneTable {
public:
    virtual ~PaneTable() = default;

    virtual Side side() const = 0;
    // The row most recently added to the selection, or -1.
    virtual int selectedRow() const = 0;
    virtual RowSet selectedRows() const = 0;
    virtual int rowCount() const = 0;

    // Selects the row alone; a row outside the listing leaves nothing selected.
    virtual void selectRow(int row) = 0;
    virtual void selectRows(const RowSet &rows) = 0;
    virtual void scrollToRow(int row) = 0;

    virtual ShownRows shownRows() const = 0;
    virtual void showRows(const ShownRows &rows) = 0;

    // The column whose header shows the sort arrow, and the arrow.
    virtual std::optional<Column> highlightedColumn() const = 0;
    virtual void setSortIndicator(Column column, SortDirection direction) = 0;

    virtual void redraw() = 0;
};
