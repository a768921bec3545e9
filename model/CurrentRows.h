#pragma once

#include "model/Listing.h"
#include "model/RowSet.h"

// The rows as they are in the listing now: the row a person saw is the row acted on. Rows of
// another listing are found again by their path; what is gone, and numbers out of range, drop out.
RowSet currentRows(const RowSet &rows, const Listing &seen, const Listing &now);
// What a table showed, in the listing now. Selected are those that are still there; in place of a
// row that is gone the keyboard and the view take the one that has its number.
ShownRows currentRows(const ShownRows &shown, const Listing &seen, const Listing &now);
