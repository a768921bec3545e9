#pragma once

#include "files/FileStatus.h"

#include <QByteArray>

#include <system_error>

struct TreeRemovalEnd {
    std::error_code failed;
    QByteArray stays {}; // the first entry that could not go, its path in the tree; "": the item
    QString reason() const; // why something is still there, as a sentence for a person
};

// Removes an entry of an open folder, a folder with everything in it. By descriptors: never through
// a link, never across a mount point (one inside stops with device_or_resource_busy), and only what
// is the expected item, if one is named. What cannot be removed stays, the rest goes; the answer is
// the first error. `closed`: folders that their owner may not write to are opened for it. Any
// thread.
enum class ClosedFolders { Keep, Open };
TreeRemovalEnd removeTreeAt(int folder, const char *name,
                            const std::optional<FileIdentity> &expected = {},
                            ClosedFolders closed = ClosedFolders::Keep);
