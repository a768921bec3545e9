#include "sheets/trash/TrashModel.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"
#include "widgets/FileKinds.h"
#include "widgets/MenuText.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

bool isFolderItem(const TrashedItem &item)
{
    return item.status.kind == FileKind::Directory;
}

bool isSame(const TrashedItem &a, const TrashedItem &b)
{
    return a.status.identity == b.status.identity && a.name == b.name && a.trash == b.trash;
}

} // namespace

TrashModel::TrashModel(const DateText &dateText, const FileKinds &fileKinds)
    : dates(dateText)
    , kinds(fileKinds)
{
}

void TrashModel::setItems(const QList<TrashedItem> &items)
{
    beginResetModel();
    _items = items;
    sortItems();
    endResetModel();
}

int TrashModel::rowOf(const TrashedItem &item) const
{
    const auto found =
        std::ranges::find_if(_items, [&](const TrashedItem &other) { return isSame(item, other); });
    return found == _items.end() ? -1 : int(found - _items.begin());
}

int TrashModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(_items.size());
}

int TrashModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QString TrashModel::text(const TrashedItem &item, Column column) const
{
    switch (column) {
    case NameColumn:
        return FileName::shown(item.formerName());
    case OriginColumn:
        return item.broken.isEmpty() ? FileName::shown(PathText::parent(item.origin)) : item.broken;
    case DeletedColumn:
        return item.deleted.isValid() ? dates.getLocalizedShortDateAndTime(item.deleted) : u"--"_s;
    case SizeColumn: // a folder's would have to be walked for
        return isFolderItem(item) ? u"--"_s : SizeText::getCalcFileSize(item.status.size);
    case Columns:
        break;
    }
    return {};
}

QVariant TrashModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= _items.size())
        return {};
    const TrashedItem &item = _items[index.row()];
    const auto column = Column(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text(item, column);
    case Qt::DecorationRole:
        return column == NameColumn ? kinds.icon(item.formerName(), item.status.kind) : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(FileName::shown(item.path())
                            + (item.broken.isEmpty() ? QString() : u'\n' + item.broken));
    case Qt::TextAlignmentRole:
        return int((column == SizeColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant TrashModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const QString titles[] = { localized("Name"), localized("Origin"), localized("Deleted"),
                               localized("Size") };
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? titles[section] : QVariant();
}

void TrashModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= Columns)
        return;
    _sortedBy = Column(column);
    _order = order;
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    const QList<int> rows = sortItems();
    QModelIndexList after;
    for (const QModelIndex &was : before)
        after.append(this->index(rows[was.row()], was.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

QList<int> TrashModel::sortItems()
{
    const auto before = [this](const TrashedItem &a, const TrashedItem &b) {
        switch (_sortedBy) {
        case NameColumn:
            return QString::compare(a.formerName(), b.formerName(), Qt::CaseInsensitive) < 0;
        case OriginColumn:
            return a.origin < b.origin;
        case SizeColumn:
            if (isFolderItem(a) || isFolderItem(b))
                return isFolderItem(a) && !isFolderItem(b);
            return a.status.size < b.status.size;
        case DeletedColumn:
        case Columns:
            break;
        }
        return a.deleted < b.deleted;
    };
    QList<int> order(_items.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [&](int one, int other) {
        const TrashedItem &a = _items[one];
        const TrashedItem &b = _items[other];
        return _order == Qt::AscendingOrder ? before(a, b) : before(b, a);
    });
    QList<TrashedItem> sorted;
    sorted.reserve(_items.size());
    QList<int> now(_items.size());
    for (const int row : std::as_const(order)) {
        now[row] = int(sorted.size());
        sorted.append(_items[row]);
    }
    _items = sorted;
    return now;
}
