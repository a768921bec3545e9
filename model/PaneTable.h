#pragma once

#include "model/Listing.h"
#include "model/RowChanges.h"
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

    // As the arrows go there: the row alone is selected and in view. While rows are marked these
    // stay selected, and only the keyboard goes there.
    virtual void goToRow(int row) = 0;
    // From where the next match is looked for: the selected row, while rows are marked the
    // keyboard's.
    virtual int rowOfKeyboard() const = 0;

    virtual ShownRows shownRows() const = 0;
    virtual void showRows(const ShownRows &rows) = 0;
    // Follows a few changes of its rows, which have been made; what is selected stays so.
    virtual void changeRows(const RowChanges &changes) = 0;
    // While its rows are shown anew and the same ones selected again, nobody hears of a selection.
    virtual void setQuiet(bool quiet) = 0;

    // The column whose header shows the sort arrow, and the arrow.
    virtual std::optional<Column> highlightedColumn() const = 0;
    virtual void setSortIndicator(Column column, SortDirection direction) = 0;

    // Whether what is done next is for the row that is under the pointer now: a drag is over the
    // table, or its rows were clicked so lately that a double click may follow.
    virtual bool isPointedAt() const = 0;

    virtual void redraw() = 0;
};
