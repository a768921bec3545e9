#include "indexer/BusyFiles.h"

#include <algorithm>

namespace {

constexpr qint64 Rest = 1000; // without a change
constexpr qint64 Interval = 4000; // between two readings of one that does not rest
constexpr qint64 TimesDuration = 20; // and longer, where reading takes long
constexpr qsizetype MostKept = 256;

} // namespace

qint64 BusyFiles::waitFor(qint64 folder, const QByteArray &name, const PackedItem::Stamp &stamp,
                          qint64 now)
{
    const auto record = _records.find({ folder, name });
    if (record == _records.end() || now >= record->readAgain)
        return 0;
    if (record->stamp != stamp) {
        record->stamp = stamp;
        record->changed = now;
    }
    return std::max(qint64(0), std::min(record->changed + Rest, record->readAgain) - now);
}

void BusyFiles::wasRead(qint64 folder, const QByteArray &name, const PackedItem::Stamp &stamp,
                        qint64 now, qint64 duration)
{
    if (_records.size() >= MostKept)
        _records.removeIf([now](const auto &record) { return now >= record.value().readAgain; });
    if (_records.size() >= MostKept)
        return; // none of that many is written all the time
    _records.insert({ folder, name },
                    { stamp, now, now + std::max(Interval, duration * TimesDuration) });
}
