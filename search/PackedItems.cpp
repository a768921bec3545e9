#include "search/PackedItems.h"

#include <cstring>
#include <type_traits>

// Length of the name, type, stamp, name.
namespace {

constexpr qsizetype Head = 2;
constexpr qsizetype StampSize = sizeof(PackedItem::Stamp);
static_assert(std::is_trivially_copyable_v<PackedItem::Stamp> && StampSize == 32);

} // namespace

void appendPacked(QByteArray &items, const PackedItem &item)
{
    const char head[Head] = { char(item.name.size()), char(item.type) };
    char stamp[StampSize];
    std::memcpy(stamp, &item.stamp, StampSize);
    items.append(head, Head).append(stamp, StampSize).append(item.name);
}

bool PackedItems::next(PackedItem &item)
{
    if (_end - _at < Head + StampSize)
        return false;
    const qsizetype length = quint8(_at[0]);
    if (_end - _at < Head + StampSize + length)
        return false;
    item.type = quint8(_at[1]);
    std::memcpy(&item.stamp, _at + Head, StampSize);
    item.name = { _at + Head + StampSize, length };
    _at += Head + StampSize + length;
    return true;
}
