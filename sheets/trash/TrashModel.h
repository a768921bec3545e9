#pragma once

#include "platform/TrashCan.h"

#include <QAbstractTableModel>

class DateText;
class FileKinds;

// What lies in the Trash, as rows that a person may sort. Texts and icons are those of visible
// rows. Main thread.
class TrashModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { NameColumn, OriginColumn, DeletedColumn, SizeColumn, Columns };

    TrashModel(const DateText &dates, const FileKinds &kinds);

    void setItems(const QList<TrashedItem> &items); // sorted as the rows before
    const QList<TrashedItem> &items() const { return _items; }
    int rowOf(const TrashedItem &item) const; // -1: it is there no more

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    QList<int> sortItems(); // answers the row of each one that was there
    QString text(const TrashedItem &item, Column column) const;

    const DateText &dates;
    const FileKinds &kinds;
    QList<TrashedItem> _items;
    Column _sortedBy = DeletedColumn;
    Qt::SortOrder _order = Qt::DescendingOrder;
};
