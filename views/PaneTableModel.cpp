#include "views/PaneTableModel.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/MainModel.h"
#include "model/RowChanges.h"
#include "settings/CalendarFormat.h"
#include "settings/UserDefaults.h"

PaneTableModel::PaneTableModel(Side side, const MainModel &model, const UserDefaults &settings,
                               QObject *parent)
    : QAbstractTableModel(parent)
    , _side(side)
    , mainModel(model)
    , defaults(settings)
{
    connect(&mainModel, &MainModel::rowsAboutToChange, this, [this](Side changed) {
        if (changed == _side)
            beginResetModel();
    });
    connect(&mainModel, &MainModel::rowsChanged, this, [this](Side changed) {
        if (changed == _side)
            endResetModel();
    });
}

const Listing &PaneTableModel::rows() const
{
    return mainModel.rows(_side);
}

void PaneTableModel::changeRows(const RowChanges &changes)
{
    const QList<RowRange> removed = rangesOf(changes.removed);
    const QList<RowRange> inserted = rangesOf(changes.inserted);
    _told = rowCount() - int(changes.inserted.size()) + int(changes.removed.size());
    for (auto range = removed.crbegin(); range != removed.crend(); ++range) {
        beginRemoveRows({}, range->first, range->last);
        *_told -= range->last - range->first + 1;
        endRemoveRows();
    }
    for (const RowRange &range : inserted) {
        beginInsertRows({}, range.first, range.last);
        *_told += range.last - range.first + 1;
        endInsertRows();
    }
    _told.reset();
    for (const RowRange &range : rangesOf(changes.changed))
        Q_EMIT dataChanged(index(range.first, 0), index(range.last, ColumnCount - 1));
}

bool PaneTableModel::hidesAll() const
{
    return mainModel.isFiltered(_side) && rows().size() <= FirstItemRow;
}

void PaneTableModel::setDateFormat(const QString &format)
{
    _dateFormat = format;
    _dateLocale = defaults.dictionaryRepresentation();
    if (const int count = rowCount())
        Q_EMIT dataChanged(index(0, int(Column::Date)), index(count - 1, int(Column::Date)));
}

QString PaneTableModel::widestDate() const
{
    return CalendarFormat::text(QDateTime(QDate(2028, 9, 27), QTime(22, 58, 58)), _dateFormat,
                                _dateLocale);
}

void PaneTableModel::setDateAlignment(Qt::Alignment alignment)
{
    _dateAlignment = alignment;
    Q_EMIT headerDataChanged(Qt::Horizontal, int(Column::Date), int(Column::Date));
    if (const int count = rowCount())
        Q_EMIT dataChanged(index(0, int(Column::Date)), index(count - 1, int(Column::Date)));
}

int PaneTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : _told.value_or(int(rows().size()));
}

int PaneTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PaneTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || !rows().holds(index.row()))
        return {};
    const auto column = static_cast<Column>(index.column());
    switch (role) {
    case Qt::DisplayRole: // and what readers tell: of a row nothing but its texts
        return column == Column::Icon ? QVariant() : text(rows()[index.row()], column);
    case Qt::DecorationRole:
        return column == Column::Icon ? QVariant(rows()[index.row()].icon()) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(alignment(column));
    default:
        return {};
    }
}

Qt::ItemFlags PaneTableModel::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QVariant PaneTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    const auto column = static_cast<Column>(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant(alignment(column));
    if (role == Qt::AccessibleTextRole && column == Column::Icon)
        return localized("Icon");
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    switch (column) {
    case Column::Name:
        return localized("Name");
    case Column::Size:
        // The blank holds the title over its numbers, which keep clear of the dates.
        return role == Qt::DisplayRole ? localized("Size") + QChar(0x2002) : localized("Size");
    case Column::Date:
        return localized("Date");
    case Column::Type:
        return localized("Type");
    case Column::Icon:
        break;
    }
    return {};
}

QString PaneTableModel::text(const Entry &entry, Column column) const
{
    switch (column) {
    case Column::Name:
        return FileName::shown(entry.name());
    case Column::Size:
        return entry.size();
    case Column::Date:
        return CalendarFormat::text(entry.date(), _dateFormat, _dateLocale);
    case Column::Type:
        return entry.type();
    case Column::Icon:
        break;
    }
    return {};
}

Qt::Alignment PaneTableModel::alignment(Column column) const
{
    if (column == Column::Size)
        return Qt::AlignRight | Qt::AlignVCenter;
    if (column == Column::Date)
        return _dateAlignment | Qt::AlignVCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}
