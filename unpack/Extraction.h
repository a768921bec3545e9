#pragma once

#include "files/FileStatus.h"

#include <QByteArray>
#include <QList>
#include <QMap>

#include <optional>

enum class ArchiveKind { PkZip, Cpio };

// What came out of an archive into the staging folder.
struct Extracted {
    // Folders that their owner may not write or enter, and the permissions they are to have in the
    // end; until then they are open, so that they can be moved and removed. Relative paths.
    struct ClosedFolder {
        unsigned permissions;
        FileIdentity identity;
    };
    QMap<QByteArray, ClosedFolder> closedFolders;
    bool memberRefused = false;
};

// Unpacks an archive into the working directory, which must be empty and out of others' reach.
// Members that are absolute, climb out, write through a link, come twice or are devices are refused
// with a line on standard error. Nothing when the archive cannot be read to its end or the person
// cancelled.
std::optional<Extracted> extract(const QByteArray &archive, ArchiveKind kind);
