#pragma once

#include "files/TreeList.h"

#include <QElapsedTimer>
#include <QStringList>

class Staging;
class Workspace;

// What a run takes away at last: the items that it replaced, and what it has moved to another file
// system. They go when the new ones are on the device, many at once, and only while they are what
// they were. Used by one worker.
class PendingRemovals final {
public:
    PendingRemovals(int source, int destination, QString destinationPath, Staging &staging,
                    Workspace &workspace);

    // What came out of a name, an entry of the staging folder.
    void addReplaced(const QByteArray &entry, const QByteArray &name, const FileStatus &status);
    void addMoved(const TreeList &list);

    bool isEmpty() const { return _replaced.empty() && _moved.empty(); }
    bool isDue() const; // so that neither space nor time runs out
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
    void settleReplaced(const Replaced &item, const std::error_code &unwritten);
    void count(qint64 bytes);

    int _source;
    int _destination;
    QString _destinationPath;
    Staging &staging;
    Workspace &workspace;
    std::vector<Replaced> _replaced;
    std::vector<TreeList> _moved;
    qint64 _bytes = 0;
    QElapsedTimer _since;
    QStringList _told;
};
