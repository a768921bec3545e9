#pragma once

#include "indexer/Documents.h"
#include "indexer/Indexer.h"
#include "indexer/Reading.h"
#include "indexer/Tree.h"
#include "indexer/Watches.h"
#include "search/IndexLock.h"

#include <atomic>

// The work on one index file, from its opening to the first fault. Times are milliseconds of a
// clock that only goes on.
class Session final {
public:
    Session(ForeignFiles &files, const Indexer::LeftOut &leftOut, const Indexer::Limits &limits,
            const IndexLock &alone, const std::atomic<bool> &stopped, int wake);

    enum class End {
        Stopped,
        Replaced, // the index file, the home folder or its rules are others: begin anew
        Damaged, // the index is no index: take it away
        Later, // the disk does not take it now
    };
    End run(const std::function<void()> &idle);

private:
    bool refresh(); // false: a fault, or it was stopped
    void takeChanges();
    void updateChanged();
    void allMayHaveChanged(qint64 time);
    void rest(qint64 folder, qint64 begin);
    bool commit();
    bool commitInPortions();
    void wait(bool working);
    qint64 nextTime() const;
    std::optional<End> fault(); // also without one: who looks after the files
    static qint64 now();

    Indexer::Times _times;
    const IndexLock &_alone;
    const std::atomic<bool> &_stopped;
    int _wake;
    IndexWriter _index;
    std::optional<DocumentWriter> _writer; // when the index is open
    std::optional<Watches> _watches;
    std::optional<Tree> _tree;
    std::optional<Reading> _reading;
    std::optional<Documents> _documents;
    ForeignFiles &_files;
    const Indexer::LeftOut &_leftOut;
    QStringList _listed; // what it answered
    int _mostWatches;

    QHash<qint64, qint64> _changed; // folders, and when they are read
    struct Rest {
        qint64 end = 0; // not read again before
        qint64 forgotten = 0;
        int inARow = 0;
    };
    QHash<qint64, Rest> _rests; // of folders that were read not long ago
    qint64 _watched = 0; // when changes were taken
    qint64 _lastChange = 0;
    qint64 _refreshAt = -1; // -1: never
    qint64 _refreshTook = 0;
    qint64 _lookAt = 0;
    qint64 _uncommittedSince = 0;
    qint64 _written = 0; // bytes of text in this transaction
};
