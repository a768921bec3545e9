#pragma once

#include "model/Listing.h"

#include <vector>

struct ListingData;
struct ListingRecord;

// The records of a listing in the order of a column: "..", then the folders, then the files,
// whatever the direction. Names and kinds compare by plain code point, sizes and dates as numbers;
// equal keys keep their order.
std::vector<ListingRecord> sortedRecords(const ListingData &data, Column column,
                                         SortDirection direction);
