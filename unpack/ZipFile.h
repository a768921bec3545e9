#pragma once

#include <QByteArray>
#include <QHash>

#include <archive.h>
#include <vector>

// A zip file as the archive library reads it, changed on the way so that names stay the bytes they
// are. The mark that a name is UTF-8 goes: the library converts such names, which folds two
// spellings of one accent into one and drops a name that is not UTF-8 after all. A second name, in
// an extra field, counts only when it is UTF-8 as it says: zip spells a DEL there as nobody may.
// And a backslash in a name that comes from a Unix system is masked, as the library takes it for a
// slash.
class ZipFile final {
public:
    ZipFile() = default;
    ~ZipFile();
    ZipFile(const ZipFile &) = delete;
    ZipFile &operator=(const ZipFile &) = delete;

    // Gives the file to the reader. False with errno when it cannot be opened.
    bool open(archive *reader, const QByteArray &path);
    // The name of a member, given the one that the reader found.
    QByteArray realName(const QByteArray &name) const { return _maskedNames.value(name, name); }

private:
    // One byte: which of its bits stay, and which are set then.
    struct Change {
        qint64 position;
        char keep;
        char set;
    };
    struct Entry;
    static la_ssize_t read(archive *reader, void *self, const void **bytes);
    static la_int64_t seek(archive *reader, void *self, la_int64_t offset, int whence);
    void readDirectory();
    // The field at a position of the file gets a number that nobody knows.
    bool hideBrokenName(qint64 position, const QByteArray &extra);
    void maskBackslashes(const std::vector<Entry> &entries);

    int _descriptor = -1;
    qint64 _size = 0;
    qint64 _position = 0;
    std::vector<Change> _changes; // in ascending order
    QHash<QByteArray, QByteArray> _maskedNames; // with the real ones
    std::vector<char> _block;
};
