#include "model/FilteredListing.h"

#include "model/ListingData.h"

#include <algorithm>

FilteredListing FilteredListing::of(const Listing &whole) const
{
    FilteredListing made;
    made._whole = whole;
    if (whole.folder() == _whole.folder())
        made._filter = _filter;
    made.choose(nullptr);
    return made;
}

FilteredListing FilteredListing::through(const NameFilter &filter) const
{
    FilteredListing made;
    made._whole = _whole;
    made._filter = filter;
    made.choose(filter.narrows(_filter) ? _places.get() : nullptr);
    return made;
}

void FilteredListing::choose(const std::vector<quint32> *candidates)
{
    _shown = _whole;
    if (!_filter.isOn() || _whole.isEmpty())
        return;
    const ListingData &data = _whole.data();
    auto places = std::make_shared<std::vector<quint32>>();
    auto shown = std::make_shared<ListingData>(data.emptied());
    const auto take = [&](quint32 row) {
        places->push_back(row);
        shown->records.push_back(data.records[row]);
    };
    const auto look = [&](quint32 row) {
        if (_filter.matches(data.name(data.records[row])))
            take(row);
    };
    take(ParentRow);
    if (candidates) {
        for (size_t i = FirstItemRow; i < candidates->size(); ++i)
            look((*candidates)[i]);
    } else {
        for (quint32 row = FirstItemRow; row < data.records.size(); ++row)
            look(row);
    }
    _shown = Listing(std::move(shown));
    _places = std::move(places);
}

int FilteredListing::wholeRow(int shownRow) const
{
    return _places && _shown.holds(shownRow) ? int((*_places)[size_t(shownRow)]) : shownRow;
}

int FilteredListing::nextShownRow(int wholeRow) const
{
    if (!_places || wholeRow < 0)
        return wholeRow;
    return int(std::ranges::lower_bound(*_places, quint32(wholeRow)) - _places->begin());
}

int FilteredListing::shownRow(int row) const
{
    const int next = nextShownRow(row);
    return !_places || (_shown.holds(next) && wholeRow(next) == row) ? next : NoRow;
}

ShownRows FilteredListing::rowsIn(const FilteredListing &other, const ShownRows &shown) const
{
    const auto next = [&](int row) {
        return std::min(other.nextShownRow(wholeRow(row)), int(other._shown.size()) - 1);
    };
    ShownRows found = shown;
    found.current = next(shown.current);
    found.first = next(shown.first);
    found.newest = other.shownRow(wholeRow(shown.newest));
    found.selected.clear();
    for (const int row : shown.selected)
        if (const int now = other.shownRow(wholeRow(row)); now >= 0)
            found.selected.append(now);
    return found;
}
