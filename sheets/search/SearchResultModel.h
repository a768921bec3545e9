#pragma once

#include "platform/MetadataIndex.h"

#include <QAbstractTableModel>

class FileKinds;
class FileQueries;
class PathIcons;

// The rows of the metadata search: they are the query's results, and nothing is kept of them, so
// that a hundred thousand cost as little as ten. Icons and texts are those of visible rows. Main
// thread.
class SearchResultModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { IconColumn, NameColumn, PathColumn, Columns };

    SearchResultModel(const FileQueries &queries, const FileKinds &kinds, PathIcons &icons);

    void setQuery(MetadataQuery *query); // null: none
    void reload(); // the query has other results now
    const MetadataQuery::Result &resultAt(int row) const; // of no row: empty
    int rowOf(const MetadataQuery::Result &result) const; // -1: none

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QIcon icon(const MetadataQuery::Result &result) const;

    const FileQueries &queries;
    const FileKinds &kinds;
    PathIcons &icons; // asked as rows are painted
    MetadataQuery *_query = nullptr; // not owned
    int _rows = 0;
};
