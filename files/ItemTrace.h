#pragma once

#include "files/FileStatus.h"

#include <QByteArray>

// What proves later that an item is still the one it was, and whether it was changed since. Any
// thread.
struct ItemTrace {
    FileIdentity identity;
    FileKind kind = FileKind::Regular;
    qint64 size = 0; // bytes
    qint64 modified = 0; // nanoseconds since 1970
    std::optional<qint64> created {}; // the same, where there is one: numbers are used again
    qint64 taken = 0; // the same; what was changed in a folder after that moment is later

    // Of an item as its folder has it now. `keepsInodes`: see files/FolderMark.
    static ItemTrace of(const FileStatus &status, bool keepsInodes = true);

    // Whether something is that item, with whatever content. Where inode numbers are made up, only
    // an unchanged one is known again.
    bool isOf(const FileStatus &now, bool keepsInodes) const;
    // Whether the item of that name is it, and nothing was written to it or put into it since.
    bool isUntouched(int folder, const QByteArray &name) const;
};
