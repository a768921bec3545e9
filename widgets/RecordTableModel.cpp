#include "widgets/RecordTableModel.h"

#include "base/Localized.h"
#include "files/DiskQuestions.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "widgets/Icons.h"

#include <QGuiApplication>
#include <QPalette>

#include <QPointer>

using namespace Qt::StringLiterals;

RecordTableModel::RecordTableModel(const QStringList &titles, DiskQuestions &diskQuestions,
                                   IconOf iconOf)
    : _titles(titles)
    , questions(diskQuestions)
    , _iconOf(std::move(iconOf))
{
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
    switch (role) {
    case Qt::DisplayRole:
        return isIcon ? QVariant()
                      : FileName::shown(record.texts.value(index.column() - IconColumn - 1));
    case Qt::DecorationRole:
        return isIcon ? look(record.path).icon : QVariant();
    case Qt::ForegroundRole:
        return look(record.path).state == State::Gone
            ? QGuiApplication::palette().color(QPalette::Disabled, QPalette::WindowText)
            : QVariant();
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return look(record.path).state == State::Gone
            ? filled(localized("'%@' is not there."), FileName::shown(record.path))
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

const RecordTableModel::Look &RecordTableModel::look(const QString &path) const
{
    if (const auto known = _looks.constFind(path); known != _looks.cend())
        return *known;
    auto *self = const_cast<RecordTableModel *>(this);
    questions.ask(
        path, [path] { return fileStatus(path, Links::Follow); },
        [model = QPointer(self), path](const std::optional<FileStatus> &status) {
            if (model)
                model->take(path, status);
        });
    return *_looks.insert(path, {});
}

void RecordTableModel::take(const QString &path, const std::optional<FileStatus> &status)
{
    _looks[path] = status ? Look { State::There, _iconOf(path, *status) }
                          : Look { State::Gone, themedIcon(u"dialog-warning"_s) };
    for (int row = 0; row < _records.size(); ++row)
        if (_records[row].path == path)
            Q_EMIT dataChanged(index(row, 0), index(row, int(_titles.size()) - 1));
}
