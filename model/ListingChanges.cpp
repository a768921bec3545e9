#include "model/ListingChanges.h"

#include "files/FolderMark.h"
#include "model/ItemLook.h"
#include "model/ListingData.h"
#include "model/Sorting.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <functional>
#include <utility>

namespace {

constexpr size_t MostArenas = 1000; // then the names move together
constexpr qsizetype NameLimit = 255; // bytes; no folder has longer ones

// Whether a name may be among some others, told by its last bytes.
class NameMarks {
public:
    void add(QByteArrayView name) { _marks[mark(name)] = true; }
    bool mayHold(QByteArrayView name) const { return _marks[mark(name)]; }

private:
    static constexpr int Bits = 16;
    static size_t mark(QByteArrayView name)
    {
        quint64 bytes = 0;
        const auto length = qMin<qsizetype>(name.size(), sizeof bytes);
        std::memcpy(&bytes, name.end() - length, size_t(length));
        return (bytes * 0x9E3779B97F4A7C15ULL) >> (64 - Bits);
    }
    std::array<bool, 1 << Bits> _marks {};
};

class Changing {
public:
    Changing(const Listing &listing, ItemLook &items, const QSet<QByteArray> &names)
        : _before(listing.data())
        , _items(items)
        , _now(_before.emptied())
        , _precedes(_now, _before.order)
    {
        _now.arenas.push_back(_names);
        _sorted = names.values();
        std::ranges::sort(_sorted);
    }
    ChangedListing changed();

private:
    struct Inserted {
        ListingRecord record;
        int before; // the row of the earlier listing
        int from; // the item's earlier row, or NoRow
    };

    int rowOf(QByteArrayView name) const;
    QHash<QByteArrayView, int> rowsBefore() const;
    std::optional<ListingRecord> look(const QByteArray &name);
    void compare(int row, std::optional<ListingRecord> record);
    void putTogether();
    void moveNamesTogether();

    const ListingData &_before;
    ItemLook &_items;
    ListingData _now;
    const RecordOrder _precedes;
    const std::shared_ptr<std::string> _names = std::make_shared<std::string>(); // of new items
    QByteArrayList _sorted;
    std::vector<std::pair<int, ListingRecord>> _inPlace;
    std::vector<Inserted> _inserted;
    RowChanges _rows;
};

// In a listing that is in the order of the names.
int Changing::rowOf(QByteArrayView name) const
{
    const auto precedes = [&](const ListingRecord &record, QByteArrayView other) {
        const int order = _before.name(record).compare(other);
        return _before.order->direction == SortDirection::Ascending ? order < 0 : order > 0;
    };
    const auto first = _before.records.begin() + FirstItemRow;
    const auto end = _before.records.end();
    const auto files = std::partition_point(first, end, std::mem_fn(&ListingRecord::isFolder));
    for (const auto &[from, to] : { std::pair(first, files), std::pair(files, end) })
        if (const auto found = std::lower_bound(from, to, name, precedes);
            found != to && _before.name(*found) == name)
            return int(found - _before.records.begin());
    return NoRow;
}

QHash<QByteArrayView, int> Changing::rowsBefore() const
{
    if (_before.order && _before.order->column == Column::Name) {
        QHash<QByteArrayView, int> rows;
        for (const QByteArray &name : _sorted)
            rows.insert(name, rowOf(name));
        return rows;
    }
    auto filter = std::make_unique<NameMarks>();
    QHash<QByteArrayView, int> rows;
    rows.reserve(_sorted.size());
    for (const QByteArray &name : _sorted) {
        filter->add(name);
        rows.insert(name, NoRow);
    }
    for (size_t row = 1; row < _before.records.size(); ++row) {
        const QByteArrayView name = _before.name(_before.records[row]);
        if (!filter->mayHold(name))
            continue;
        if (const auto found = rows.find(name); found != rows.end())
            *found = int(row);
    }
    return rows;
}

std::optional<ListingRecord> Changing::look(const QByteArray &name)
{
    if (name.size() > NameLimit || _items.hidesName(name))
        return {};
    // What the folder itself would say of the item.
    const auto own = _items.reader().status(name.constData(), Links::NoFollow);
    if (!own && (errno == ENOENT || errno == ENOTDIR))
        return {};
    ListingRecord record;
    record.nameLength = quint16(name.size());
    const unsigned char type = !own ? DT_UNKNOWN : own->kind == FileKind::Symlink ? DT_LNK : DT_REG;
    return _items.look(name.constData(), type, record, _items.folderOfNames(), own)
        ? std::optional(record)
        : std::nullopt;
}

// An item that had a row, or NoRow, and is to have the record, or none.
void Changing::compare(int row, std::optional<ListingRecord> record)
{
    const auto insert = [&] {
        const auto place = std::upper_bound(_before.records.begin() + 1, _before.records.end(),
                                            *record, std::ref(_precedes));
        _inserted.push_back({ *record, int(place - _before.records.begin()), row });
    };
    if (row == NoRow)
        return insert();
    if (record) {
        const ListingRecord &earlier = _before.records[size_t(row)];
        if (*record == earlier)
            return;
        if (!_precedes(earlier, *record) && !_precedes(*record, earlier)) {
            _inPlace.emplace_back(row, *record);
            return;
        }
        insert();
    }
    _rows.removed.append(row);
}

void Changing::putTogether()
{
    std::ranges::sort(_rows.removed);
    std::ranges::stable_sort(_inserted, [this](const Inserted &a, const Inserted &b) {
        return a.before != b.before ? a.before < b.before : _precedes(a.record, b.record);
    });
    const std::vector<ListingRecord> &earlier = _before.records;
    _now.records.reserve(earlier.size() + _inserted.size());
    size_t taken = 0;
    auto removed = _rows.removed.cbegin();
    const auto takeUntil = [&](size_t end) {
        for (; removed != _rows.removed.cend() && size_t(*removed) < end; ++removed) {
            _now.records.insert(_now.records.end(), earlier.begin() + qptrdiff(taken),
                                earlier.begin() + *removed);
            taken = size_t(*removed) + 1;
        }
        _now.records.insert(_now.records.end(), earlier.begin() + qptrdiff(taken),
                            earlier.begin() + qptrdiff(end));
        taken = end;
    };
    for (const Inserted &one : _inserted) {
        takeUntil(size_t(one.before));
        if (one.from != NoRow)
            _rows.moved.insert(one.from, int(_now.records.size()));
        _rows.inserted.append(int(_now.records.size()));
        _now.records.push_back(one.record);
    }
    takeUntil(earlier.size());
    for (const auto &[row, record] : _inPlace) {
        const int now = _rows.rowNow(row);
        _now.records[size_t(now)] = record;
        _rows.changed.append(now);
    }
    std::ranges::sort(_rows.changed);
}

void Changing::moveNamesTogether()
{
    auto all = std::make_shared<std::string>();
    for (ListingRecord &record : _now.records) {
        const QByteArrayView name = _now.name(record);
        record.nameOffset = quint32(all->size());
        record.arena = 0;
        all->append(name.data(), size_t(name.size()));
    }
    _now.arenas = { all };
}

ChangedListing Changing::changed()
{
    const QHash<QByteArrayView, int> rows = rowsBefore();
    for (const QByteArray &name : std::as_const(_sorted)) {
        const int row = rows.value(name, NoRow);
        auto record = look(name);
        if (record && row != NoRow) {
            const ListingRecord &earlier = _before.records[size_t(row)];
            record->arena = earlier.arena;
            record->nameOffset = earlier.nameOffset;
        } else if (record) {
            record->arena = quint16(_now.arenas.size() - 1);
            record->nameOffset = quint32(_names->size());
            _names->append(name.constData(), size_t(name.size()));
        }
        if (record || row != NoRow)
            compare(row, record);
    }
    ListingRecord parent = _items.parent();
    parent.arena = _before.records.front().arena;
    parent.nameOffset = _before.records.front().nameOffset;
    if (parent != _before.records.front())
        _inPlace.emplace_back(ParentRow, parent);
    putTogether();
    if (_names->empty())
        _now.arenas.pop_back();
    else if (_now.arenas.size() > MostArenas)
        moveNamesTogether();
    return { Listing(std::make_shared<const ListingData>(std::move(_now))), std::move(_rows) };
}

} // namespace

std::optional<ChangedListing> withChanges(const Listing &listing, const FileIdentity &folder,
                                          const QSet<QByteArray> &names)
{
    if (listing.isEmpty() || listing.error())
        return {};
    ItemLook items(listing.folder(), listing.data().options);
    if (items.open())
        return {};
    const auto status = statusOf(items.reader().descriptor());
    if (!status || status->identity != folder || foldsNames(items.reader().descriptor()))
        return {};
    return Changing(listing, items, names).changed();
}
