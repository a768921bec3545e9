#pragma once

#include "model/Listing.h"

#include <QHash>

#include <vector>

struct ListingData;
struct ListingRecord;

// The records of a listing in the order of a column: "..", then the folders, then the files,
// whatever the direction. Names and kinds compare by plain code point, sizes and dates as numbers;
// equal keys keep their order.
std::vector<ListingRecord> sortedRecords(const ListingData &data, Column column,
                                         SortDirection direction);

// Whether one record stands before another in an order: a folder before a file, then by the column;
// of equal keys neither does. `data` keeps both names. One thread at a time.
class RecordOrder final {
public:
    RecordOrder(const ListingData &data, std::optional<SortOrder> order);
    bool operator()(const ListingRecord &a, const ListingRecord &b) const;

private:
    int compared(const ListingRecord &a, const ListingRecord &b) const;
    QByteArray kindOf(const ListingRecord &record) const;

    const ListingData &_data;
    const std::optional<SortOrder> _order; // none: folders and files alone are kept apart
    mutable QHash<QByteArrayView, QByteArray> _kindOfSuffix; // of regular files
};
