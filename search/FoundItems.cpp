#include "search/FoundItems.h"

#include "files/FileName.h"

#include <QSet>

#include <algorithm>

namespace {

// Many are gone before memory is given back.
constexpr size_t FewGone = 1000;
// One takes some 400 bytes, and nobody looks through so many.
constexpr qsizetype MostItems = 500'000;

bool isBefore(const FoundItems::Item *one, const FoundItems::Item *other)
{
    const int order = one->key.compare(other->key);
    return order != 0 ? order < 0 : one->result.path < other->result.path;
}

QCollator nameOrder()
{
    QCollator order;
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    return order;
}

} // namespace

qsizetype FoundItems::Snapshot::indexOf(const MetadataQuery::Result &result) const
{
    const Item wanted { result, nameOrder().sortKey(result.displayName) };
    const auto found = std::ranges::lower_bound(order, &wanted, isBefore);
    return found != order.end() && (*found)->result.path == result.path ? found - order.begin()
                                                                        : -1;
}

FoundItems::FoundItems()
    : _collator(nameOrder())
{
}

void FoundItems::add(const QByteArray &folder, QByteArrayView name, By by)
{
    if (folder != _folder) {
        _folder = folder;
        _folderPath = FileName::fromBytes(folder);
        if (!_folderPath.endsWith(u'/'))
            _folderPath += u'/';
    }
    const QString shown = FileName::fromBytes(name);
    const QString path = _folderPath + shown;
    if (_byPath.size() >= MostItems && !_byPath.contains(path)) {
        _isFull = true;
        return;
    }
    Item *&item = _byPath[path];
    if (!item) {
        item = &_items->emplace_back(Item { { path, shown }, _collator.sortKey(shown) });
        _portion.push_back(item);
    }
    item->round = _round;
    item->walked = by == By::Walk;
}

void FoundItems::dropOthers(bool keepWalked)
{
    std::vector<const Item *> gone;
    for (const Item *item : std::as_const(_byPath)) {
        if (item->round != _round && !(keepWalked && item->walked))
            gone.push_back(item);
    }
    drop(gone);
}

void FoundItems::drop(const std::vector<const Item *> &gone)
{
    if (gone.empty())
        return;
    const QSet<const Item *> all(gone.begin(), gone.end());
    for (const Item *item : gone)
        _byPath.remove(item->result.path);
    const auto isGone = [&all](const Item *item) { return all.contains(item); };
    std::erase_if(_portion, isGone);
    _dropped = std::erase_if(_order, isGone) > 0 || _dropped;
    if (_items->size() > FewGone && _items->size() > 2 * size_t(_byPath.size()))
        compact();
}

FoundItems::Snapshot FoundItems::snapshot()
{
    std::ranges::sort(_portion, isBefore);
    std::vector<const Item *> merged;
    merged.reserve(_order.size() + _portion.size());
    std::ranges::merge(_order, _portion, std::back_inserter(merged), isBefore);
    _order = std::move(merged);
    _portion.clear();
    _dropped = false;
    return { .items = _items, .order = _order, .cut = _isFull };
}

// The old ones may still be shown, so these move to memory of their own.
void FoundItems::compact()
{
    auto items = std::make_shared<std::deque<Item>>();
    for (std::vector<const Item *> *list : { &_order, &_portion }) {
        for (const Item *&item : *list) {
            Item &copy = items->emplace_back(*item);
            _byPath[copy.result.path] = &copy;
            item = &copy;
        }
    }
    _items = std::move(items);
}
