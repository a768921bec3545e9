#include "sheets/search/SearchResultModel.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/FileQueries.h"
#include "widgets/FileKinds.h"
#include "widgets/MenuText.h"
#include "widgets/PathIcons.h"

#include <limits>

SearchResultModel::SearchResultModel(const FileQueries &fileQueries, const FileKinds &fileKinds,
                                     PathIcons &pathIcons)
    : queries(fileQueries)
    , kinds(fileKinds)
    , icons(pathIcons)
{
}

void SearchResultModel::setQuery(MetadataQuery *query)
{
    _query = query;
    reload();
}

void SearchResultModel::reload()
{
    beginResetModel();
    const qsizetype count = _query ? _query->resultCount() : 0;
    _rows = int(std::min<qsizetype>(count, std::numeric_limits<int>::max()));
    endResetModel();
}

const MetadataQuery::Result &SearchResultModel::resultAt(int row) const
{
    static const MetadataQuery::Result none;
    return row >= 0 && row < _rows ? _query->resultAt(row) : none;
}

int SearchResultModel::rowOf(const MetadataQuery::Result &result) const
{
    const qsizetype index = _query && !result.path.isEmpty() ? _query->indexOf(result) : -1;
    return index < _rows ? int(index) : -1;
}

int SearchResultModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : _rows;
}

int SearchResultModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant SearchResultModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= _rows)
        return {};
    const auto column = Column(index.column());
    const MetadataQuery::Result &result = _query->resultAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (column == IconColumn)
            return {};
        return FileName::shown(column == NameColumn ? result.displayName
                                                    : queries.getLocalizedPath(result.path));
    case Qt::DecorationRole:
        return column == IconColumn ? icon(result) : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(FileName::shown(result.path));
    case Qt::AccessibleTextRole: // a picture has no text of its own
        return column == IconColumn ? FileName::shown(result.displayName)
                                    : data(index, Qt::DisplayRole);
    default:
        return {};
    }
}

QVariant SearchResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const QString titles[] = { localized("Icon"), localized("Name"), localized("Path") };
    if (role == Qt::DisplayRole)
        return section == IconColumn ? QVariant() : titles[section];
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::AccessibleTextRole ? titles[section] : QVariant();
}

QIcon SearchResultModel::icon(const MetadataQuery::Result &result) const
{
    const PathIcons::Look look = icons.look(result.path);
    const bool isKnown = look.state == PathIcons::State::There;
    if (isKnown || look.state == PathIcons::State::Asked)
        return look.icon;
    return kinds.genericDocumentIcon(); // a link that leads nowhere
}
