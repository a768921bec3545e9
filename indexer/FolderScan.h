#pragma once

#include <QByteArray>
#include <QList>

#include <system_error>

// What lies in one folder now, as the index keeps it.
struct FolderScan {
    struct Subfolder {
        QByteArray name;
        quint64 inode = 0;
        quint64 device = 0;
        bool mountPoint = false;
    };

    // Of an open folder. An item that goes meanwhile is left out.
    std::error_code read(int folder);

    QByteArray items; // packed
    QList<Subfolder> subfolders;
    qint64 newest = 0; // nanoseconds since 1970: the latest time of a file
    bool hasCacheMark = false; // a file of that name; its signature was not looked at
};
