#include "widgets/RecordTableModel.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"
#include "widgets/PathIcons.h"

#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

RecordTableModel::RecordTableModel(const QStringList &titles, PathIcons &pathIcons)
    : _titles(titles)
    , icons(pathIcons)
{
    connect(&icons, &PathIcons::arrived, this, &RecordTableModel::showLook);
}

void RecordTableModel::setRecords(const QList<Record> &records)
{
    beginResetModel();
    _records = records;
    endResetModel();
}

int RecordTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(_records.size());
}

int RecordTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(_titles.size());
}

QVariant RecordTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= _records.size())
        return {};
    const Record &record = _records[index.row()];
    const bool isIcon = index.column() == IconColumn;
    const auto isGone = [&] { return icons.look(record.path).state == PathIcons::State::Gone; };
    switch (role) {
    case Qt::DisplayRole:
        return isIcon ? QVariant()
                      : FileName::shown(record.texts.value(index.column() - IconColumn - 1));
    case Qt::DecorationRole:
        if (!isIcon)
            return {};
        return isGone() ? themedIcon(u"dialog-warning"_s) : icons.look(record.path).icon;
    case Qt::ForegroundRole:
        return isGone() ? QGuiApplication::palette().color(QPalette::Disabled, QPalette::WindowText)
                        : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(data(index, Qt::AccessibleDescriptionRole).toString());
    case Qt::AccessibleDescriptionRole:
        return isGone() ? filled(localized("'%@' is not there."), FileName::shown(record.path))
                        : FileName::shown(record.path);
    case Qt::AccessibleTextRole: // a picture has no text of its own
        return isIcon ? FileName::shown(record.texts.value(0)) : data(index, Qt::DisplayRole);
    default:
        return {};
    }
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return section == IconColumn ? QVariant() : _titles.value(section);
    return role == Qt::AccessibleTextRole ? _titles.value(section) : QVariant();
}

Qt::ItemFlags RecordTableModel::flags(const QModelIndex &index) const
{
    // Dropped between the rows, not on them.
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled
        | Qt::ItemNeverHasChildren;
}

void RecordTableModel::showLook(const QString &path)
{
    for (int row = 0; row < _records.size(); ++row)
        if (_records[row].path == path)
            Q_EMIT dataChanged(index(row, 0), index(row, int(_titles.size()) - 1));
}
