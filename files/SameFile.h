#pragma once

#include "files/FileStatus.h"
#include "files/MountTable.h"

// Which file is which: through links, hard links, bind mounts and other names for one folder.
namespace SameFile {

// Whether both paths lead to one file or folder, each taken as itself and as what it links to.
bool isSame(const QString &a, const QString &b);
// The same with what is known of the two already; of an item that is not there, nothing.
bool isSame(const QString &a, const std::optional<FileStatus> &itself, const QString &b,
            const std::optional<FileStatus> &other);

// Whether the existing folder `inner` is `folder` itself or lies anywhere below it, also by way of
// another mount of the same file system. `folder` is taken as itself: a link is no folder.
bool isInside(const QString &inner, const QString &folder,
              const MountTable &table = MountTable::current());

} // namespace SameFile
