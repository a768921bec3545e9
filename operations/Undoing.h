#pragma once

#include "files/Descriptor.h"
#include "operations/Transfer.h"
#include "platform/Workspace.h"

class Journal;
class Programs;

// Undoes what one operation has done. Nothing is ever replaced or removed for good: what was made
// goes to the Trash, and only as long as nobody has worked on it. Used by one worker.
class Undoing final {
public:
    struct Tools {
        Programs &programs;
        Workspace &workspace;
        const Journal &journal;
        Transfer::ShowLine showLine;
        std::function<bool()> isCancelled; // asked between two items
    };
    explicit Undoing(const Tools &tools);
    ~Undoing();

    // The last item first. Answers what is left of it when it was cancelled.
    DoneItems undo(const DoneItems &done);

    bool anyUndone() const { return _anyUndone; }
    // The items that stay as they are.
    const QList<DoneItem> &refused() const { return _refused; }
    // What was refused, what stays behind and what does not come back: lines for one alert.
    const QStringList &told() const { return _told; }

private:
    void undoOne(const DoneItem &item);
    void putBackDeleted(const QList<DoneItem> &items);
    void putBackReplaced();
    // Each answers why an item stays as it is; "" when it was undone.
    QString undoItem(const DoneItem &item);
    QString renameBack(const DoneItem &item);
    QString moveBack(const DoneItem &item);
    QString discard(const DoneItem &item);

    // Why what stands at the item's place is not to be touched.
    QString reasonAgainst(const DoneItem &item);
    QString changeOf(const DoneItem &item) const; // what speaks against the Trash
    std::error_code hold(const QString &folder);
    Transfer &transferFor(const DoneItem &item);
    void endTransfer();
    void tell(const QString &name, const QString &reason);
    void refuse(const DoneItem &item, const QString &reason);

    const Tools _tools;
    // Items of one folder mostly follow each other.
    QString _folderPath;
    Descriptor _folder;
    bool _keepsInodes = true;
    std::unique_ptr<Workspace::TrashRun> _trash; // of that folder
    std::unique_ptr<Transfer> _transfer;
    QString _transferFrom;
    QString _transferTo;
    QList<DoneItem> _replaced; // whose places are free again once all is written
    bool _anyUndone = false;
    QList<DoneItem> _refused;
    QStringList _told;
};
