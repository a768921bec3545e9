#pragma once

#include "files/Descriptor.h"
#include "files/Staging.h"
#include "model/OperationRecord.h"
#include "operations/PendingRemovals.h"

#include <QHash>
#include <QSet>

#include <atomic>
#include <functional>

class Journal;
class Programs;
class Workspace;

// What may become of the item that stands at a name.
enum class Standing { Refuse, Replace, ToTrash };

// How one item came to its place, or why it did not.
struct TransferEnd {
    enum What { Done, Failed, NotAsShown } what = Failed;
    QString reason {}; // for the small print
    bool crossesDevices = false; // nothing was done yet
};

// Copies or moves the items of one folder to another, each staged and then swapped in: at every
// moment a name holds the whole old item or the whole new one. Used by one worker.
class Transfer final {
public:
    using ShowLine = std::function<void(const QString &)>;

    // `seen`: what the destination must still be, where it was looked at before.
    Transfer(Operation operation, const QString &source, const QString &destination,
             Programs &programs, Workspace &workspace, const Journal &journal, ShowLine showLine,
             const std::optional<FileIdentity> &seen = {});
    ~Transfer(); // settles what is pending

    // The status at a name of the two folders; absent, or an error that is no absence.
    struct Found {
        std::optional<FileStatus> status;
        std::error_code failure;
    };
    Found atSource(const QString &name) const;
    Found atDestination(const QString &name) const;

    // `shown`: what the person agreed to replace; anything else at the name is not as shown.
    TransferEnd put(const QString &name, Standing standing,
                    const std::optional<FileStatus> &shown = {});
    // The same under another name; copies only.
    TransferEnd putAs(const QString &name, const QString &as, Standing standing,
                      const std::optional<FileStatus> &shown = {});

    // What a program makes, told the path of a name in a hidden folder beside its place. Then it
    // takes that place; where that is not as shown it waits, and may be tried again.
    std::error_code make(const QString &name, const std::function<void(const QString &path)> &work);
    TransferEnd placeMade(Standing standing, const std::optional<FileStatus> &shown = {});
    QString hiddenFolder() const { return _staging.path(); }

    // The quick way of most moves: one rename inside the file system, to a name that proves to be
    // free. False when it is not to be had; then nothing was done.
    bool moveToFree(const QString &name, const FileStatus &given);
    // Known once a plain file could not be renamed: then nothing of this folder can.
    bool crossesDevices() const { return _crossesDevices; }

    // A run never writes over what it just made.
    bool madeHere(const QString &name, const FileStatus &status) const;

    // Takes away what is to go; answers what stays, and where, and what of an item is lacking.
    QStringList finish();

    // What has arrived, also of items that then failed in part.
    const DoneItems &done() const { return _done; }

private:
    // A whole new item that waits for its name.
    struct Arrival {
        FileStatus made;
        std::function<std::error_code(int folder, const QByteArray &name)> take;
        // Where it goes when its place is not as shown; it is removed where there is none.
        std::function<std::error_code(int folder, const QByteArray &name)> giveBack {};
    };
    // What a program has made, and the folder that it was told.
    struct Product {
        QByteArray name;
        QByteArray entry;
        Descriptor folder;
    };
    struct Item {
        QByteArray from; // its name at the source
        QByteArray to; // and at the destination
        FileStatus status;
        Standing standing;
        std::optional<FileStatus> shown;
    };

    TransferEnd attempt(const Item &item);
    TransferEnd move(const Item &item);
    TransferEnd moveOver(const Item &item);
    TransferEnd notMoved(const std::error_code &reason, const Item &item) const;
    TransferEnd takeExchanged(const Item &item, const FileStatus &before,
                              const std::function<std::error_code()> &exchange);
    void noteArrival(const Item &item, const FileIdentity &arrival);
    void tellLost(const Item &item, const std::error_code &why);
    TransferEnd copyFile(const Item &item);
    TransferEnd copyByProgram(const Item &item);
    TransferEnd place(const Item &item, const Arrival &arrival);
    void discard(const QByteArray &entry, const FileStatus &made, const QByteArray &name);
    TransferEnd swapIn(const Item &item, const QByteArray &entry);
    void discardMade();
    TransferEnd setAside(const Item &item, const std::function<std::error_code()> &take);
    TransferEnd failed(const std::error_code &reason, const QByteArray &name,
                       bool atSource = false) const;
    TransferEnd notStaged(const std::error_code &reason, const Item &item) const;
    bool isWanted(const FileStatus &found, const Item &item) const;
    void noteMade(const QString &name, const FileIdentity &identity);
    void noteReplaced(const Item &item, const FileStatus &old);
    void noteDone(const Item &item, DoneItem::Way way);

    Operation _operation;
    QString _sourcePath;
    QString _destinationPath;
    Programs &programs;
    ShowLine _showLine;
    Descriptor _source;
    std::error_code _noSource; // why it is not open
    FileIdentity _sourceFolder;
    Descriptor _destination;
    std::error_code _noDestination;
    bool _removesList = false; // as FileCopy has it, and the next
    bool _isFlushedByFile = false;
    Staging _staging;
    PendingRemovals _pending;
    Product _product;
    bool _crossesDevices = false;
    QStringList _lost; // lines about attributes
    FileIdentity _arrived; // by the last attempt, as the next two
    bool _isPlaced = false;
    DoneItem _replacing; // what it replaces
    DoneItems _done;
    mutable bool _noSpace = false; // what the last attempt failed for
    QSet<FileIdentity> _made;
    bool _keepsInodes = true; // the destination's file system
    QHash<QString, FileStatus> _madeByName; // where it does not, by the name with its case folded
};
