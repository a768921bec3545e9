#pragma once

#include "files/FileStatus.h"

#include <QByteArray>
#include <QStringList>

#include <system_error>
#include <vector>

// What an item and everything in it was at one moment: enough to tell, later, what a copy of it
// lacks and what of it has changed since. Read by descriptors; links are not followed. Any thread.
class TreeList final {
public:
    struct Entry {
        QByteArray name;
        qint32 end; // one past the last entry inside
        FileKind kind;
        bool alone; // has no other name
        FileIdentity identity;
        qint64 size; // bytes
        qint64 modified; // nanoseconds since 1970, as the next
        qint64 changed;
    };

    // The first entry is the item itself, each folder comes before what is in it. What cannot be
    // read is told by `failure()`.
    static TreeList of(int folder, const QByteArray &name);

    const std::vector<Entry> &entries() const { return _entries; }
    std::error_code failure() const { return _failure; }
    qint64 bytes() const { return _bytes; } // of its plain files

    // The entries that have attributes of the user's, as paths relative to the item, "" for itself.
    // Asking costs as much as listing.
    QStringList withAttributes(int folder) const;

    // Whether a copy holds everything, each plain file at its full length.
    bool isWholeIn(const TreeList &copy) const;
    // The same, but for files and folders that may not be read.
    bool isReadableWholeIn(const TreeList &copy, int folder) const;

    // Removes exactly these entries, where they are unchanged, and answers what had to stay: paths
    // relative to the item's folder.
    QStringList removeFrom(int folder) const;

private:
    void add(int folder, const QByteArray &name, const FileStatus &status);
    void addWithAttributes(int folder, qsizetype at, const QString &path, QStringList &found) const;
    bool isUnchanged(const Entry &entry, const FileStatus &now) const;
    void removeEntry(int folder, qsizetype at, const QString &above, QStringList &left) const;
    bool isIn(const TreeList &copy, qsizetype at, qsizetype other, int folder) const;

    std::vector<Entry> _entries;
    qint64 _bytes = 0;
    bool _keepsInodes = true;
    std::error_code _failure;
};
