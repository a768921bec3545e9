#pragma once

#include "indexer/BusyFiles.h"
#include "indexer/OfferedKinds.h"
#include "indexer/Reading.h"
#include "indexer/Tree.h"

// Goes through the items of folders and has those read that are new or another than when they were
// read. Folders that changed just now come first, then those with the newest items. Times are
// milliseconds of a clock that only goes on.
class Documents final {
public:
    Documents(IndexWriter &index, DocumentWriter &writer, Tree &tree, Reading &reading,
              qint64 waitWhenLate);

    // Its items may be others now.
    void changed(qint64 folder);
    void allMayHaveChanged();

    // Does what can be done without waiting, a few milliseconds of it; false: there was nothing.
    bool work(qint64 now);
    // Something was asked and not answered yet.
    bool isReading() const { return !_reading.isIdle(); }
    // When there is something to do again without a change; nothing: never.
    std::optional<qint64> nextTime() const;

private:
    struct Folder {
        QByteArray items; // packed
        PackedItems rest { {} }; // that were not looked at yet
        QHash<QByteArray, DocumentWriter::Known> known;
        Descriptor opened;
        bool urgent = false;
    };
    // What is still to come for a folder.
    struct Open {
        int asked = 0;
        bool urgent = false;
        bool wasFed = false;
        bool again = false;
        qint64 later = 0; // when an item can be read that could not be now
    };

    bool takeAnswers(qint64 now);
    // Until the folders are read the index does not count as whole.
    void tellWhatIsBehind(qint64 now);
    bool isTriedAgain(const Reading::Answer &answer);
    bool beginNext(qint64 now);
    bool begin(qint64 folder, bool urgent);
    void feed(const PackedItem &item, qint64 now);
    bool read(const PackedItem &item, DocumentWriter::Document document, qint64 now);
    void endFeeding();
    void endIfDone(qint64 folder);

    IndexWriter &_index;
    DocumentWriter &_writer;
    Tree &_tree;
    Reading &_reading;
    qint64 _waitWhenLate;
    OfferedKinds _kinds;
    BusyFiles _busy;
    QList<qint64> _urgent;
    QList<qint64> _pending; // those next, the last one first
    bool _mayBeMore = true; // in the index
    QHash<qint64, qint64> _later; // folders that wait for a time
    QSet<qint64> _left; // folders that cannot be opened, until something changes
    QHash<qint64, Open> _open;
    QHash<std::pair<qint64, QByteArray>, int> _late; // files, and how often their reading was
    qint64 _current = 0; // the folder that is fed
    Folder _folder;
    qint64 _noReaderUntil = 0;
    bool _hadNoReader = false;
    qint64 _behindSince = 0; // without a moment in which all that changed was known
    qint64 _tellAt = 0; // when that is to be told; 0: it is, or there is nothing to tell
    QSet<qint64> _toldBehind; // folders
};
