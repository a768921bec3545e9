#pragma once

#include "files/TreeList.h"

#include <QElapsedTimer>
#include <QStringList>

#include <future>

class Staging;
class Workspace;

// What a run takes away at last: the items that it replaced, and what it has moved to another file
// system. They go when the new ones are on the device, many at once, and only while they are what
// they were. While one lot is written out the next one is made. Used by one worker.
class PendingRemovals final {
public:
    PendingRemovals(int source, int destination, QString destinationPath, Staging &staging,
                    Workspace &workspace);

    // What came out of a name, an entry of the staging folder.
    void addReplaced(const QByteArray &entry, const QByteArray &name, const FileStatus &status);
    void addMoved(const TreeList &list);

    bool isEmpty() const { return _next.isEmpty() && _leaving.isEmpty(); }
    // So that neither space nor time runs out: of a full lot the writing begins.
    void settleDue();
    // Nothing is left to do afterwards.
    void settle();

    // Moves an entry of the staging folder to the Trash under a name; false when that refuses.
    bool trash(const QByteArray &entry, const QByteArray &name);
    // Saves an entry of the staging folder where it can be seen, and keeps a line about it.
    void save(const QByteArray &entry, const QByteArray &name, const std::error_code &reason);

    // What stays, and where: lines for one alert.
    const QStringList &told() const { return _told; }

private:
    struct Replaced {
        QByteArray entry;
        QByteArray name;
        FileIdentity identity;
    };
    struct Lot {
        std::vector<Replaced> replaced;
        std::vector<TreeList> moved;
        qint64 bytes = 0;
        QElapsedTimer since;

        bool isEmpty() const { return replaced.empty() && moved.empty(); }
        bool isFull() const;
        void count(qint64 more);
    };
    void remove(const Lot &lot, const std::error_code &unwritten);
    void removeReplaced(const Replaced &item);
    void removeWritten();

    int _source;
    int _destination;
    QString _destinationPath;
    Staging &staging;
    Workspace &workspace;
    Lot _next;
    Lot _leaving; // once `_writing` is done
    std::future<std::error_code> _writing;
    // The first failure: it may be told with one lot and be about the next.
    std::error_code _unwritten;
    QStringList _told;
};
