#pragma once

#include "search/PackedItems.h"

#include <QByteArray>
#include <QHash>

// Files that are written again and again: such a one is read when it rests, or at most every few
// seconds. Times are milliseconds of a clock that only goes on.
class BusyFiles final {
public:
    // How long a file is to be left alone; 0: it may be read now.
    qint64 waitFor(qint64 folder, const QByteArray &name, const PackedItem::Stamp &stamp,
                   qint64 now);
    void wasRead(qint64 folder, const QByteArray &name, const PackedItem::Stamp &stamp, qint64 now,
                 qint64 duration);

private:
    struct Record {
        PackedItem::Stamp stamp; // the last one that was seen
        qint64 changed = 0; // when it was seen first
        qint64 readAgain = 0; // not before, unless it rests
    };
    QHash<std::pair<qint64, QByteArray>, Record> _records; // of those read not long ago
};
