#pragma once

#include "model/Listing.h"

struct ListingData;

// Puts the records of a listing into the order of a column: "..", then the folders, then the files,
// whatever the direction. Names and kinds compare by plain code point, sizes and dates as numbers;
// equal keys keep their order.
void sortRecords(ListingData &data, Column column, SortDirection direction);
