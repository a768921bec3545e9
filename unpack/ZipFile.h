#pragma once

#include "files/Descriptor.h"
#include "unpack/ZipDirectory.h"

#include <archive.h>
#include <vector>

// A zip file as the archive library reads it, with the changes of its directory.
class ZipFile final {
public:
    ZipFile() = default;
    ZipFile(const ZipFile &) = delete; // the reader keeps where it is
    ZipFile &operator=(const ZipFile &) = delete;

    // Gives the file to the reader. False with errno when it cannot be opened.
    bool open(archive *reader, const QByteArray &path);
    // The name of a member, given the one that the reader found.
    QByteArray realName(const QByteArray &name) const
    {
        return _directory.maskedNames.value(name, name);
    }

private:
    static la_ssize_t read(archive *reader, void *self, const void **bytes);
    static la_int64_t seek(archive *reader, void *self, la_int64_t offset, int whence);

    Descriptor _opened;
    qint64 _size = 0;
    qint64 _position = 0;
    ZipDirectory _directory;
    std::vector<char> _block;
};
