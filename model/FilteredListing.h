#pragma once

#include "model/Listing.h"
#include "model/NameFilter.h"
#include "model/RowSet.h"

#include <memory>
#include <vector>

// What a pane shows of its folder: each row, or "..", and those whose names pass a filter. A value
// that shares its rows; made on any thread.
class FilteredListing final {
public:
    FilteredListing() = default;

    // Another listing: of the same folder it has the filter too, of another one none.
    FilteredListing of(const Listing &whole) const;
    // The same listing through another filter; one that narrows looks at the shown rows only.
    FilteredListing through(const NameFilter &filter) const;

    const Listing &whole() const { return _whole; }
    const Listing &shown() const { return _shown; }
    const NameFilter &filter() const { return _filter; }

    // The number of a shown row in the whole listing, and back: NoRow where the filter hides it.
    int wholeRow(int shownRow) const;
    int shownRow(int wholeRow) const;
    // What a table showed of this listing, in the same one through another filter. In place of a
    // hidden row the keyboard and the view take the next.
    ShownRows rowsIn(const FilteredListing &other, const ShownRows &shown) const;

private:
    void choose(const std::vector<quint32> *candidates);
    int nextShownRow(int wholeRow) const;

    Listing _whole;
    Listing _shown;
    NameFilter _filter;
    // Of the shown rows, in the whole listing; null without a filter.
    std::shared_ptr<const std::vector<quint32>> _places;
};
