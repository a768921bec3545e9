#pragma once

#include "files/FileStatus.h"

#include <QHash>
#include <QStringList>

#include <functional>

// Looks through what is to be packed before it is, the way zip goes: links are followed. Used by
// one worker.
class PackedItems final {
public:
    // `destination`: the folder in which the archive is made. `old`: the archive that is to be
    // replaced, if there is one.
    PackedItems(std::optional<FileIdentity> destination, std::optional<FileIdentity> old,
                std::function<bool()> isStopped);

    // Whether links in it lead in a circle, or to so much over and over that zip would not come to
    // an end. `path`: of one item.
    bool leadsInCircles(const QString &path);

    // Of all items asked about so far.
    bool holdsDestination() const { return _holdsDestination; }
    const QString &pathOfOld() const { return _pathOfOld; } // "" when it is not among them
    const QStringList &circles() const { return _circles; } // the links that lead back
    const QStringList &closedFolders() const { return _closed; } // which zip takes for empty

private:
    struct Seen {
        bool ended = false; // else we are in it now
        bool circular = false;
        double entries = 0; // as zip would meet them, those behind links each time
    };
    Seen enter(const QString &path, const FileIdentity &identity);
    void lookAt(const QString &path, const FileIdentity &identity);

    std::optional<FileIdentity> _destination;
    std::optional<FileIdentity> _old;
    std::function<bool()> _isStopped;
    QHash<FileIdentity, Seen> _seen; // the folders
    double _entries = 0; // each once
    bool _holdsDestination = false;
    QString _pathOfOld;
    QStringList _circles;
    QStringList _closed;
};
