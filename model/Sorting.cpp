#include "model/Sorting.h"

#include "files/FileName.h"
#include "model/ListingData.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

namespace {

// The first eight bytes of a name as a number: most names are told apart by it. UTF-8 keeps the
// order of code points, byte by byte.
quint64 prefix(QByteArrayView name)
{
    quint64 bytes = 0;
    std::memcpy(&bytes, name.data(), size_t(qMin<qsizetype>(name.size(), 8)));
    return qFromBigEndian(bytes);
}

// A record and the number it is compared by first.
struct Key {
    quint64 number;
    quint32 record;
};

quint64 ordered(qint64 number)
{
    return quint64(number) ^ (quint64(1) << 63);
}

// An unknown date comes before every other.
quint64 orderedDate(const ListingRecord &record)
{
    return record.hasStatus ? ordered(record.modified) : 0;
}

QString kindText(const ListingData &data, const ListingRecord &record)
{
    return data.kinds->kindText(FileName::fromBytes(data.name(record)), record.kind,
                                record.isDangling);
}

// What alone decides about its kind; "" where more than that does.
QByteArrayView suffixOfKind(const ListingData &data, const ListingRecord &record)
{
    if (record.kind != FileKind::Regular || record.isDangling)
        return {};
    return FileKinds::suffix(data.name(record));
}

// The place of each record's kind among the distinct kind texts.
std::vector<quint64> kindRanks(const ListingData &data)
{
    QHash<QString, int> indexes;
    QHash<QByteArrayView, int> indexOfSuffix; // of regular files: asks about each suffix once
    const auto indexOfText = [&](const ListingRecord &record) {
        const QString text = kindText(data, record);
        // Not emplace: that would give a known text another index.
        auto known = indexes.constFind(text);
        if (known == indexes.constEnd())
            known = indexes.insert(text, int(indexes.size()));
        return *known;
    };
    std::vector<int> indexOfRecord;
    indexOfRecord.reserve(data.records.size());
    for (const ListingRecord &record : data.records) {
        const QByteArrayView suffix = suffixOfKind(data, record);
        auto known = indexOfSuffix.constFind(suffix);
        if (suffix.isEmpty() || known == indexOfSuffix.constEnd())
            known = indexOfSuffix.insert(suffix, indexOfText(record));
        indexOfRecord.push_back(*known);
    }
    QStringList texts = indexes.keys();
    std::ranges::sort(texts, [](const QString &a, const QString &b) {
        return FileName::toBytes(a) < FileName::toBytes(b);
    });
    std::vector<quint64> rankOfIndex(size_t(texts.size()));
    for (qsizetype rank = 0; rank < texts.size(); ++rank)
        rankOfIndex[size_t(indexes.value(texts[rank]))] = quint64(rank);
    std::vector<quint64> ranks;
    ranks.reserve(indexOfRecord.size());
    for (const int index : indexOfRecord)
        ranks.push_back(rankOfIndex[size_t(index)]);
    return ranks;
}

// How many bytes all names have in common at their start.
qsizetype commonLength(const ListingData &data)
{
    QByteArrayView common;
    for (size_t i = 1; i < data.records.size(); ++i) {
        const QByteArrayView name = data.name(data.records[i]);
        if (i == 1)
            common = name;
        const auto end = std::ranges::mismatch(common, name).in1;
        common = common.first(end - common.begin());
    }
    return common.size();
}

// By number, equal ones in their old order: one byte after the other from the lowest up, without
// those in which no two numbers differ.
void sortByNumber(std::vector<Key> &keys)
{
    quint64 differing = 0;
    for (const Key &key : keys)
        differing |= key.number ^ keys.front().number;
    std::vector<Key> other(keys.size());
    for (int shift = 0; shift < 64; shift += 8) {
        if (((differing >> shift) & 0xFF) == 0)
            continue;
        std::array<size_t, 257> places {}; // where the keys with each byte go
        for (const Key &key : keys)
            ++places[((key.number >> shift) & 0xFF) + 1];
        std::partial_sum(places.begin(), places.end(), places.begin());
        for (const Key &key : keys)
            other[places[(key.number >> shift) & 0xFF]++] = key;
        keys.swap(other);
    }
}

// Each record's number in the order of the column.
struct Numbers {
    Numbers(const ListingData &listing, Column sorted)
        : data(listing)
        , column(sorted)
    {
        if (column == Column::Type)
            ranks = kindRanks(data);
        else if (column == Column::Name)
            common = commonLength(data);
    }
    quint64 operator()(quint32 record) const
    {
        const ListingRecord &of = data.records[record];
        switch (column) {
        case Column::Size:
            return ordered(of.size);
        case Column::Date:
            return orderedDate(of);
        case Column::Type:
            return ranks[record];
        default:
            return prefix(data.name(of).sliced(common));
        }
    }

    const ListingData &data;
    Column column;
    std::vector<quint64> ranks {};
    qsizetype common = 0;
};

// Puts the names in order that their numbers do not tell apart.
template <typename Before>
void sortEqualNumbers(std::vector<Key> &keys, Before before)
{
    for (auto first = keys.begin(); first != keys.end();) {
        const auto last = std::find_if(first, keys.end(),
                                       [&](const Key &key) { return key.number != first->number; });
        if (last - first > 1)
            std::sort(first, last, before);
        first = last;
    }
}

} // namespace

std::vector<ListingRecord> sortedRecords(const ListingData &data, Column column,
                                         SortDirection direction)
{
    const bool ascending = direction == SortDirection::Ascending;
    const Numbers numbers(data, column);
    std::vector<Key> folders;
    std::vector<Key> files;
    files.reserve(data.records.size());
    for (quint32 i = 1; i < data.records.size(); ++i) {
        const quint64 number = numbers(i);
        // Downward by turned numbers: equal ones keep their order either way.
        (data.records[i].isFolder ? folders : files).push_back({ ascending ? number : ~number, i });
    }
    const auto nameBefore = [&](const Key &a, const Key &b) {
        const int order =
            data.name(data.records[a.record]).compare(data.name(data.records[b.record]));
        return ascending ? order < 0 : order > 0;
    };
    std::vector<ListingRecord> sorted { data.records.front() };
    sorted.reserve(data.records.size());
    for (std::vector<Key> *group : { &folders, &files }) {
        sortByNumber(*group);
        if (column == Column::Name)
            sortEqualNumbers(*group, nameBefore);
        for (const Key &key : *group)
            sorted.push_back(data.records[key.record]);
    }
    return sorted;
}

RecordOrder::RecordOrder(const ListingData &data, std::optional<SortOrder> order)
    : _data(data)
    , _order(order)
{
}

QByteArray RecordOrder::kindOf(const ListingRecord &record) const
{
    const auto text = [&] { return FileName::toBytes(kindText(_data, record)); };
    const QByteArrayView suffix = suffixOfKind(_data, record);
    if (suffix.isEmpty())
        return text();
    auto known = _kindOfSuffix.constFind(suffix);
    if (known == _kindOfSuffix.constEnd())
        known = _kindOfSuffix.insert(suffix, text());
    return *known;
}

int RecordOrder::compared(const ListingRecord &a, const ListingRecord &b) const
{
    const auto sign = [](auto left, auto right) { return (left > right) - (left < right); };
    switch (_order->column) {
    case Column::Name:
        return _data.name(a).compare(_data.name(b));
    case Column::Size:
        return sign(ordered(a.size), ordered(b.size));
    case Column::Date:
        return sign(orderedDate(a), orderedDate(b));
    case Column::Type:
        return kindOf(a).compare(kindOf(b));
    case Column::Icon:
        break;
    }
    return 0;
}

bool RecordOrder::operator()(const ListingRecord &a, const ListingRecord &b) const
{
    if (a.isFolder != b.isFolder)
        return a.isFolder;
    if (!_order)
        return false;
    const int order = compared(a, b);
    return _order->direction == SortDirection::Ascending ? order < 0 : order > 0;
}
