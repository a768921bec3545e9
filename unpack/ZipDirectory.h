#pragma once

#include <QByteArray>
#include <QHash>

#include <functional>
#include <vector>

// What is read differently in a zip file so that names stay the bytes they are, by its directory.
// The mark that a name is UTF-8 goes: the archive library converts such names, which folds two
// spellings of one accent into one and drops a name that is not UTF-8 after all. A second name, in
// an extra field, counts only when it is UTF-8 as it says: zip spells a DEL there as nobody may.
// And a backslash in a name that comes from a Unix system is masked, as the library takes it for a
// slash.
struct ZipDirectory {
    // The bytes at an offset of the file; empty when there are fewer.
    using Source = std::function<QByteArray(qint64 offset, qint64 count)>;
    // Of a file of this size. What is none, or damaged, has no changes from there on.
    static ZipDirectory of(const Source &bytesAt, qint64 size);

    // One byte: which of its bits stay, and which are set then.
    struct Change {
        qint64 position; // may lie behind the end of a damaged file
        char keep;
        char set;
    };
    std::vector<Change> changes {}; // in ascending order
    QHash<QByteArray, QByteArray> maskedNames {}; // with the real ones
};
