#pragma once

#include "model/RowSet.h"

// Marking rows one by one: what a table of so many rows shows after a key. ".." is never marked.
namespace RowMarks {

// The keyboard's row is marked, or no longer, and the keyboard goes to the next. With none marked
// that one is then selected, as an arrow would.
ShownRows afterMarking(const ShownRows &shown, int rowCount);

// What was not selected is marked.
ShownRows afterInverting(const ShownRows &shown, int rowCount);

} // namespace RowMarks
