#pragma once

#include "search/Database.h"
#include "search/IndexFile.h"
#include "search/NameWalk.h"
#include "search/PackedItems.h"
#include "search/TextMatch.h"

#include <QHash>

#include <atomic>
#include <functional>
#include <vector>

// Answers a query from the index, without looking at the items themselves. One thread.
class IndexReader final {
public:
    // Each call returns early when `stop` becomes true.
    IndexReader(QString path, const std::atomic<bool> &stop);

    // Opens the file, or the one that took its place; false when there is none to go by. What is
    // read between two calls is of one state of it.
    bool begin();
    void end();

    // Of the state that was begun: every folder that is walked is in it, as it is now; and what
    // lies there was read. Both are false when no program keeps the index in line with the disk.
    bool hasAllNames() const { return _hasAllNames; }
    bool hasAll() const { return _hasAll; }
    // Something was written since begin(), or the file is another one, gone, or back, or whoever
    // writes it.
    bool hasChanged();
    // What was answered since begin() is not all, because the file is damaged.
    bool failed() const;

    void findNames(const TextMatch &match, const TakeHit &take);
    // An item as it was when it was read.
    using TakeRead = std::function<void(const QByteArray &folder, QByteArrayView name,
                                        const PackedItem::Stamp &stamp)>;
    void findDocuments(const QueryText &query, const TextMatch &match, const TakeRead &take);

private:
    QByteArray pathOf(qint64 folder); // empty when there is no way up to the home folder

    const QString _path;
    const std::atomic<bool> &_stop;
    Database _database;
    std::optional<FileIdentity> _file; // the one that was opened
    qint64 _version = 0; // PRAGMA data_version
    bool _isFollowed = false; // the disk, by an indexer
    bool _hasAllNames = false;
    bool _hasAll = false;
    QHash<qint64, QByteArray> _paths;
    Statement _parent;
};
