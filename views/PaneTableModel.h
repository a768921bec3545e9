#pragma once

#include "model/Listing.h"
#include "model/Side.h"

#include <QAbstractTableModel>
#include <QVariantMap>

class MainModel;
class UserDefaults;
struct RowChanges;

// One pane's listing as the table shows it: row n is entry n, a cell is made when it is painted.
class PaneTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    PaneTableModel(Side side, const MainModel &mainModel, const UserDefaults &defaults,
                   QObject *parent = nullptr);

    const Listing &rows() const;
    bool hidesAll() const; // a filter that no name passes

    // Tells what changed of the rows, which are those of now.
    void changeRows(const RowChanges &changes);

    // A calendar format; empty shows the plain description.
    void setDateFormat(const QString &format);
    // The text of a date that needs about as much room as any.
    QString widestDate() const;
    void setDateAlignment(Qt::Alignment alignment); // Qt::AlignLeft or Qt::AlignRight

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const Entry &entry, Column column) const;
    Qt::Alignment alignment(Column column) const;

    const Side _side;
    const MainModel &mainModel;
    const UserDefaults &defaults;
    QString _dateFormat;
    QVariantMap _dateLocale;
    Qt::Alignment _dateAlignment = Qt::AlignLeft;
    std::optional<int> _told; // rows, in the middle of telling what changed of them
};
