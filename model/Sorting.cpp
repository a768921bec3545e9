#include "model/Sorting.h"

#include "model/ListingData.h"
#include "platform/FileName.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

// The first eight bytes of a name as a number: most comparisons end here, without a look at the
// names. UTF-8 keeps the order of code points, byte by byte.
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

// The place of each record's kind among the distinct kind texts.
std::vector<quint64> kindRanks(const ListingData &data)
{
    QHash<QString, int> indexes;
    std::vector<int> indexOfRecord;
    indexOfRecord.reserve(data.records.size());
    for (const ListingRecord &record : data.records) {
        const QString text = data.kinds->kindText(FileName::fromBytes(data.name(record)),
                                                  record.kind, record.isDangling);
        // Not emplace: that would give a known text another index.
        auto known = indexes.constFind(text);
        if (known == indexes.constEnd())
            known = indexes.insert(text, int(indexes.size()));
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

quint64 number(const ListingData &data, const ListingRecord &record, Column column)
{
    switch (column) {
    case Column::Size:
        return ordered(record.size);
    case Column::Date:
        // An unknown date comes before every other.
        return record.hasStatus ? ordered(record.modified) : 0;
    default:
        return prefix(data.name(record));
    }
}

} // namespace

void sortRecords(ListingData &data, Column column, SortDirection direction)
{
    const std::vector<quint64> ranks =
        column == Column::Type ? kindRanks(data) : std::vector<quint64>();
    std::vector<Key> folders;
    std::vector<Key> files;
    for (quint32 i = 1; i < data.records.size(); ++i) {
        const ListingRecord &record = data.records[i];
        const quint64 key = column == Column::Type ? ranks[i] : number(data, record, column);
        (record.isFolder ? folders : files).push_back({ key, i });
    }
    const auto nameOf = [&](const Key &key) { return data.name(data.records[key.record]); };
    const auto before = [&](const Key &a, const Key &b) {
        if (a.number != b.number || column != Column::Name)
            return a.number < b.number;
        return nameOf(a).compare(nameOf(b)) < 0;
    };
    const auto after = [&](const Key &a, const Key &b) { return before(b, a); };

    std::vector<ListingRecord> sorted { data.records.front() };
    sorted.reserve(data.records.size());
    for (std::vector<Key> *group : { &folders, &files }) {
        if (direction == SortDirection::Ascending)
            std::ranges::stable_sort(*group, before);
        else
            std::ranges::stable_sort(*group, after);
        for (const Key &key : *group)
            sorted.push_back(data.records[key.record]);
    }
    data.records = std::move(sorted);
}
