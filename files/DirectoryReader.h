#pragma once

#include "files/Descriptor.h"
#include "files/FileStatus.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <functional>
#include <system_error>

// What the folder itself says of an entry, without looking at the entry.
struct DirectoryItem {
    QByteArrayView name; // valid during the call only
    unsigned char type; // DT_* of dirent(5); DT_UNKNOWN where the file system does not say
};

// Reads a folder with getdents64 and keeps its descriptor for the *at calls that follow. Any
// thread.
class DirectoryReader {
public:
    // Links::NoFollow refuses a link in the last component.
    std::error_code open(const QString &path, Links links = Links::Follow);
    std::error_code openAt(int folder, const char *name); // never follows a link
    int descriptor() const { return _descriptor.number(); }

    // Calls `visit` for each entry except "." and "..", in the folder's own order, until it returns
    // false. Answers the error that ended the reading early, if one did.
    std::error_code read(const std::function<bool(const DirectoryItem &)> &visit);

    // The same of a folder that is open already, from its first entry on; and its names alone.
    static std::error_code readOpen(int folder,
                                    const std::function<bool(const DirectoryItem &)> &visit);
    static std::error_code readNames(int folder, QList<QByteArray> &names);

    // Makes the folder the working directory of the calling thread alone, for the system calls that
    // know no descriptor; false where that cannot be. For threads that work on nothing else.
    bool workHere() const;

    // The status of an entry by the folder's descriptor.
    std::optional<FileStatus> status(const char *name, Links links) const;

private:
    Descriptor _descriptor;
};
