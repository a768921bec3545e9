#include "window/ToolbarItemModels.h"

#include "widgets/MenuText.h"
#include "window/Toolbar.h"
#include "window/ToolbarItems.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Row numbers are this program's own: another one of its windows must not take them.
QString dragType()
{
    return u"application/x-twinleaf-toolbar-item-%1"_s.arg(QCoreApplication::applicationPid());
}

} // namespace

ToolbarItemModel::ToolbarItemModel(Toolbar &shownToolbar)
    : toolbar(shownToolbar)
{
    connect(&toolbar, &Toolbar::iconArrived, this, [this](const QString &identifier) {
        const auto row = _rows.indexOf(identifier);
        if (row >= 0)
            Q_EMIT dataChanged(index(int(row)), index(int(row)), { Qt::DecorationRole });
    });
}

void ToolbarItemModel::setRows(const QStringList &identifiers)
{
    if (identifiers == _rows)
        return;
    beginResetModel();
    _rows = identifiers;
    endResetModel();
}

int ToolbarItemModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(_rows.size());
}

QVariant ToolbarItemModel::data(const QModelIndex &index, int role) const
{
    const auto look = toolbar.look(identifier(index.row()));
    if (!look)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return look->label;
    case Qt::ToolTipRole:
        return plainToolTip(look->toolTip);
    case Qt::AccessibleDescriptionRole:
        return look->toolTip;
    case Qt::DecorationRole: // asked for rows that can be seen
        return toolbar.icon(identifier(index.row()));
    default:
        return {};
    }
}

Qt::ItemFlags ToolbarItemModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled; // between the rows
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
        | Qt::ItemNeverHasChildren;
}

QStringList ToolbarItemModel::mimeTypes() const
{
    return { dragType() };
}

QMimeData *ToolbarItemModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    const int row = indexes.first().row();
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << (isOfBar() ? row : -1) << identifier(row);
    auto *data = new QMimeData;
    data->setData(dragType(), bytes);
    return data;
}

std::optional<ToolbarItemModel::Dragged> ToolbarItemModel::dragged(const QMimeData *data)
{
    if (!data->hasFormat(dragType()))
        return std::nullopt;
    Dragged item;
    QDataStream(data->data(dragType())) >> item.row >> item.identifier;
    return item;
}

ToolbarBarModel::ToolbarBarModel(Toolbar &shownToolbar)
    : ToolbarItemModel(shownToolbar)
{
    connect(&toolbar, &Toolbar::changed, this, &ToolbarBarModel::reload);
    reload();
}

void ToolbarBarModel::reload()
{
    _all = toolbar.identifiers();
    _places.clear();
    QStringList seen;
    for (qsizetype place = 0; place < _all.size(); ++place) {
        const auto look = toolbar.look(_all[place]);
        if (!look || !look->isOffered)
            continue;
        _places.append(place);
        seen.append(_all[place]);
    }
    setRows(seen);
}

bool ToolbarBarModel::isStillAt(int row)
{
    const QString seen = identifier(row);
    reload();
    return row >= 0 && row < rowCount() && identifier(row) == seen;
}

int ToolbarBarModel::add(const QString &identifier, int before)
{
    reload();
    const int row = std::clamp(before, 0, rowCount());
    QStringList all = _all;
    all.insert(row < rowCount() ? _places[row] : all.size(), identifier);
    toolbar.setIdentifiers(all);
    return row;
}

int ToolbarBarModel::remove(int row)
{
    if (!isStillAt(row))
        return -1;
    QStringList all = _all;
    all.removeAt(_places[row]);
    toolbar.setIdentifiers(all);
    return std::min(row, rowCount() - 1);
}

int ToolbarBarModel::move(int row, int before)
{
    // Before itself, or before the next, it stands already.
    if (!isStillAt(row) || before < 0 || before > rowCount() || before == row || before == row + 1)
        return -1;
    QStringList all = _all;
    const qsizetype from = _places[row];
    qsizetype to = before < rowCount() ? _places[before] : all.size();
    if (from < to)
        --to;
    all.move(from, to);
    toolbar.setIdentifiers(all);
    return row < before ? before - 1 : before;
}

bool ToolbarBarModel::dropMimeData(const QMimeData *data, Qt::DropAction, int row, int,
                                   const QModelIndex &parent)
{
    const auto item = dragged(data);
    if (!item)
        return false;
    const int before = row >= 0 ? row : parent.isValid() ? parent.row() : rowCount();
    const int place = item->row >= 0 ? move(item->row, before) : add(item->identifier, before);
    if (place >= 0)
        Q_EMIT dropped(place);
    return place >= 0;
}

ToolbarPaletteModel::ToolbarPaletteModel(Toolbar &shownToolbar, ToolbarBarModel &bar)
    : ToolbarItemModel(shownToolbar)
    , _bar(bar)
{
    connect(&toolbar, &Toolbar::changed, this, &ToolbarPaletteModel::reload);
    reload();
}

void ToolbarPaletteModel::reload()
{
    const QStringList inBar = toolbar.identifiers();
    const QSet<QString> taken(inBar.begin(), inBar.end());
    QStringList identifiers = toolbar.toolbarAllowedItemIdentifiers();
    identifiers.removeIf([&](const QString &identifier) {
        return !toolbar.look(identifier)->isOffered
            || (taken.contains(identifier) && !toolbarGapOf(identifier));
    });
    setRows(identifiers);
}

bool ToolbarPaletteModel::dropMimeData(const QMimeData *data, Qt::DropAction, int, int,
                                       const QModelIndex &)
{
    const auto item = dragged(data);
    if (!item || item->row < 0)
        return false; // it came from here
    _bar.remove(item->row);
    return true;
}
