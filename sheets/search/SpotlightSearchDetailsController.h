#pragma once

#include "files/Readings.h"
#include "platform/MetadataIndex.h"

#include <QObject>
#include <QStandardItemModel>

// The attributes of one item, a row each. Main thread.
class SpotlightSearchDetailsController final : public QObject {
    Q_OBJECT

public:
    explicit SpotlightSearchDetailsController(MetadataIndex &index);

    // What is known of it comes when the disk has answered. "": of none.
    void setCurrentItem(const QString &path);
    const QString &currentItem() const { return _currentItem; }
    bool isReading() const { return _readings.anyWanted(); }
    QStandardItemModel &rows() { return _rows; } // "Property" and "Value"

    // A value as one line: without the tabs and the ends of lines in it.
    static QString valueText(const QVariant &value);

    bool end(QDeadlineTimer deadline) { return _readings.end(deadline); }

Q_SIGNALS:
    void arrived(); // what is known of the current item

private:
    void show(const QList<MetadataAttribute> &attributes);

    MetadataIndex &metadataIndex;
    QString _currentItem;
    QStandardItemModel _rows { 0, 2 };
    Readings _readings;
};
