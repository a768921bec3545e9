#pragma once

#include "files/ItemTrace.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

// An item that lies in the Trash, as it and its record are.
struct TrashedItem {
    QString trash; // the Trash it lies in: of the home folder, or of another volume
    QString name; // its own, below "files" there, and that of its record
    QString origin; // where it lay, absolute; "" where no record tells
    QString broken; // why it cannot be put back, as a sentence for a person; "" when it may
    QDateTime deleted; // local time; invalid where no record tells
    FileStatus status; // as it was listed; a link is a link

    QString path() const; // where it lies now
    QString formerName() const; // the one a person knows it by
};

// What became of an item that was to leave the Trash.
struct TrashEnd {
    enum What {
        Done,
        NoFolder, // the folder that it lay in is gone; nothing was done
        Failed,
    } what = Done;
    QString reason {}; // as a sentence for a person; "" when it is done
};

// What lies in the Trash, and the ways out of it. Links are never followed, and what is not the
// item that was listed (as ItemTrace knows it) is left alone. All of it waits for the disk: any
// thread but the window's.
class TrashCan {
public:
    TrashCan() = default;
    virtual ~TrashCan() = default;
    TrashCan(const TrashCan &) = delete;
    TrashCan &operator=(const TrashCan &) = delete;

    // What lies in the Trashes of this person, on local volumes alone, in no order. `unread` gets a
    // line for each Trash that cannot be read or must not be trusted, and for each volume left out.
    virtual QList<TrashedItem> items(QStringList *unread = nullptr) = 0;

    // Whether folders that are gone by now are made again on the way to an item's place.
    enum class Folders { Keep, Make };
    // Moves an item to where it lay, never over anything. When it fails it stays in the Trash, with
    // its record.
    virtual TrashEnd putBack(const TrashedItem &item, Folders folders = Folders::Keep) = 0;

    // An item by what it is, whatever the Trash calls it, and the place from which it went there.
    struct Gone {
        ItemTrace trace;
        QString origin;
    };
    // The same for items that were moved to the Trash a while ago; one answer each, in their order.
    // One that was put back, removed or given another place since fails.
    virtual QList<TrashEnd> putBack(const QList<Gone> &items, Folders folders = Folders::Keep) = 0;

    // Removes an item for good, and its record after it. What cannot be removed of a folder stays,
    // the rest of it goes.
    virtual TrashEnd remove(const TrashedItem &item) = 0;
};
