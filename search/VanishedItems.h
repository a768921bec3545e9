#pragma once

#include "search/FoundItems.h"

#include <QDeadlineTimer>

#include <vector>

// Notices when found items are gone from the disk, by the times of the folders they lie in: one
// look a folder as long as nothing changes in it. One thread, off the main one; waits for the disk.
class VanishedItems final {
public:
    void watch(const FoundItems::Snapshot &found);

    // Looks at a part of them, at all in about a second; those that are gone. When there are some,
    // it is told what to watch anew.
    std::vector<const FoundItems::Item *> look();

private:
    struct Stamp {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 modified = 0; // nanoseconds since 1970
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    struct Folder {
        QByteArray path;
        Stamp stamp; // when all its items were there
        std::vector<const FoundItems::Item *> items;
    };
    // How many questions that took.
    static int look(Folder &folder, std::vector<const FoundItems::Item *> &gone);

    std::shared_ptr<const std::deque<FoundItems::Item>> _items; // live as long as they are watched
    std::vector<Folder> _folders;
    size_t _next = 0;
    QDeadlineTimer _again; // not sooner all over
};
