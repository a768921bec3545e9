#pragma once

#include "files/FolderEvents.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

// The watches of inotify, one a folder. They hold to the folder itself, whatever its path becomes.
class Watches final {
public:
    // At most so many; as many as the system's limit leaves to others when it is not told.
    explicit Watches(int most = defaultMost());
    static int defaultMost();

    int descriptor() const { return _events.descriptor(); }
    // A part of the folders is not watched: there is no inotify, or not enough of it.
    bool isShort() const { return _short; }

    void add(qint64 folder, const QByteArray &path); // of a folder that is there, without a link
    void remove(qint64 folder);
    // The folder that was watched is gone, though one of its name and number may be there.
    bool hasEnded(qint64 folder) const { return _ended.contains(folder); }

    struct Changes {
        QSet<qint64> folders; // in which something changed
        bool lost = false; // there was more than the queue holds
    };
    Changes take(); // what came since, without waiting

private:
    FolderEvents _events;
    int _most;
    bool _short = false;
    QHash<int, qint64> _folders; // by watch
    QHash<qint64, int> _watches; // by folder
    QSet<qint64> _ended; // folders whose watch the system took away
};
