#include "model/Listing.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/ListingData.h"
#include "model/Sorting.h"

#include <algorithm>
#include <atomic>

using namespace Qt::StringLiterals;

namespace {

constexpr struct {
    Column column;
    const char *identifier;
} Columns[] = {
    { Column::Icon, "Icon" }, { Column::Name, "Name" }, { Column::Size, "Size" },
    { Column::Date, "Date" }, { Column::Type, "Type" },
};

} // namespace

QString columnIdentifier(Column column)
{
    return QString::fromLatin1(Columns[int(column)].identifier);
}

std::optional<Column> columnFromIdentifier(const QString &identifier)
{
    for (const auto &entry : Columns) {
        if (identifier == QLatin1StringView(entry.identifier))
            return entry.column;
    }
    return std::nullopt;
}

quint64 ListingData::nextGeneration()
{
    static std::atomic<quint64> last = 0;
    return ++last;
}

Listing::Listing()
    : _data(std::make_shared<ListingData>())
{
}

Listing::Listing(std::shared_ptr<const ListingData> data)
    : _data(std::move(data))
{
}

Listing Listing::sorted(Column column, SortDirection direction) const
{
    if (isEmpty() || column == Column::Icon)
        return *this;
    auto data = std::make_shared<ListingData>(_data->emptied());
    data->records = sortedRecords(*_data, column, direction);
    data->order = SortOrder { column, direction };
    return Listing(std::move(data));
}

QString Listing::folder() const
{
    return _data->folder;
}

qsizetype Listing::size() const
{
    return qsizetype(_data->records.size());
}

Entry Listing::at(qsizetype row) const
{
    return { _data, quint32(row) };
}

qsizetype Listing::rowOfPath(const QString &path) const
{
    if (isEmpty())
        return -1;
    if (path == _data->folder)
        return 0;
    const QString name = PathText::lastComponent(path);
    return PathText::joined(_data->folder, name) == path ? rowOfName(name) : -1;
}

qsizetype Listing::rowOfName(const QString &name) const
{
    const QByteArray bytes = FileName::toBytes(name);
    const auto &records = _data->records;
    const auto found = std::ranges::find_if(
        records, [&](const ListingRecord &record) { return _data->name(record) == bytes; });
    return found == records.end() ? -1 : found - records.begin();
}

std::error_code Listing::error() const
{
    return _data->error;
}

std::optional<SortOrder> Listing::order() const
{
    return _data->order;
}

quint64 Listing::generation() const
{
    return _data->generation;
}
