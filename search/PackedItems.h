#pragma once

#include <QByteArray>

#include <sys/stat.h>

// What lies in a folder, as it stands in one row of the index. Pure; any thread.

struct PackedItem {
    // What tells whether an item is another than before. Times are compared for being equal, never
    // for their order: clocks jump.
    struct Stamp {
        qint64 size = 0; // bytes
        qint64 modified = 0; // nanoseconds since 1970
        qint64 changed = 0; // nanoseconds since 1970: the content, or anything of the status
        quint64 inode = 0;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    static qint64 nanoseconds(const auto &time) // timespec, or that of statx(2)
    {
        return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
    }
    static Stamp stampOf(const struct stat &status)
    {
        return { status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim),
                 status.st_ino };
    }

    QByteArrayView name; // of what it was read from
    quint8 type = 0; // DT_* of dirent(5), never DT_UNKNOWN
    Stamp stamp;
};

void appendPacked(QByteArray &items, const PackedItem &item);

// Goes through them; stops where they are damaged.
class PackedItems {
public:
    explicit PackedItems(QByteArrayView items)
        : _at(items.data())
        , _end(items.data() + items.size())
    {
    }
    bool next(PackedItem &item);

private:
    const char *_at;
    const char *_end;
};
