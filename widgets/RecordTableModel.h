#pragma once

#include <QAbstractTableModel>

class PathIcons;

// The rows of a list of paths that a person keeps: an icon and some texts each. What stands at a
// path is looked at when its row is painted for the first time, beside the window; a path at which
// nothing stands any more is marked. Main thread.
class RecordTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Record {
        QString path;
        QStringList texts; // for each column after the icon
    };
    static constexpr int IconColumn = 0;

    RecordTableModel(const QStringList &titles, PathIcons &icons);

    void setRecords(const QList<Record> &records);
    const QList<Record> &records() const { return _records; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    void showLook(const QString &path);

    const QStringList _titles;
    PathIcons &icons; // asked as rows are painted
    QList<Record> _records;
};
