#pragma once

#include <QByteArray>

#include <archive.h>
#include <vector>

// A zip file as the archive library reads it, with one bit changed on the way: the mark that a name
// is UTF-8. Names so marked are converted, which folds two spellings of one accent into one and
// drops the name when it is not UTF-8 after all; unmarked they pass as the bytes they are.
class ZipFile final {
public:
    ZipFile() = default;
    ~ZipFile();
    ZipFile(const ZipFile &) = delete;
    ZipFile &operator=(const ZipFile &) = delete;

    // Gives the file to the reader. False with errno when it cannot be opened.
    bool open(archive *reader, const QByteArray &path);

private:
    static la_ssize_t read(archive *reader, void *self, const void **bytes);
    static la_int64_t seek(archive *reader, void *self, la_int64_t offset, int whence);
    void findMarks();

    int _descriptor = -1;
    qint64 _size = 0;
    qint64 _position = 0;
    std::vector<qint64> _marks; // where the bytes with the mark stand, in ascending order
    std::vector<char> _block;
};
