#include "indexer/FolderScan.h"

#include "files/DirectoryReader.h"
#include "files/SystemCalls.h"
#include "search/PackedItems.h"
#include "search/WalkRules.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

std::error_code FolderScan::read(int folder)
{
    return DirectoryReader::readOpen(folder, [&](const DirectoryItem &entry) {
        struct statx status { };
        if (SystemCalls::statx(folder, entry.name.data(), AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC,
                               STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_INO,
                               &status)
            != 0)
            return true;
        const auto type = quint8(IFTODT(status.stx_mode));
        const PackedItem item { entry.name,
                                type,
                                { qint64(status.stx_size),
                                  PackedItem::nanoseconds(status.stx_mtime),
                                  PackedItem::nanoseconds(status.stx_ctime), status.stx_ino } };
        appendPacked(items, item);
        if (S_ISDIR(status.stx_mode)) {
            subfolders.append({ entry.name.toByteArray(), status.stx_ino,
                                makedev(status.stx_dev_major, status.stx_dev_minor),
                                (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 });
        } else {
            newest = std::max(newest, item.stamp.modified);
            hasCacheMark = hasCacheMark || entry.name == WalkRules::CacheMark;
        }
        return true;
    });
}
