#pragma once

#include "files/HeldItem.h"

class FileQueries;

// All that the information sheet shows of an item and has to be read for it.
struct ItemFacts {
    std::shared_ptr<const HeldItem> held; // none: nothing of the rest is known
    std::error_code why; // it is not
    bool throughLink = false; // the item is what a link leads to
    bool isDangling = false; // the item is a link that leads nowhere
    bool isApplication = false;
    bool isLocked = false;
    int label = 0;
    QString owner; // names, or numbers
    QString group;
    QString currentUser;
    QString target; // of an alias or a link
    QString type;
    QString application; // that opens it, or words that say that there is none

    const FileStatus &status() const { return held->status(); }
};

// Links as set. May take as long as the disk and the user database do: worker threads.
ItemFacts readItemFacts(const QString &path, const FileQueries &queries);

// What stands in the way of writing to the item that was shown, as a sentence for a person; "" when
// its name still leads to it. Worker threads.
QString whyNotThatItem(const QString &path, const ItemFacts &facts);

// Why the item could not be changed, where that is plain to see: "" where it is not. Worker
// threads.
QString whyNotChanged(const HeldItem &item);
