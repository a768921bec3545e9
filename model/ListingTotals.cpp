#include "model/ListingTotals.h"

#include "model/Listing.h"
#include "model/ListingData.h"
#include "model/RowSet.h"

#include <span>

ListingTotals ListingTotals::of(const Listing &listing)
{
    ListingTotals totals;
    if (listing.isEmpty())
        return totals;
    for (const ListingRecord &record : std::span(listing.data().records).subspan(FirstItemRow)) {
        ++(record.isFolder ? totals.folders : totals.files);
        if (!record.isDirectory && record.hasStatus)
            totals.bytes += record.size;
    }
    return totals;
}
