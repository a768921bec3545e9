#include "files/ItemTrace.h"

#include "files/FolderMark.h"
#include "files/StatxStatus.h"
#include "files/TreeList.h"

#include <algorithm>
#include <ctime>

namespace {

// As the kernel stamps files.
qint64 clockOfFiles()
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return qint64(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

} // namespace

ItemTrace ItemTrace::of(const FileStatus &status, bool keepsInodes)
{
    // The file system's own clock may be another machine's; without a time of change (FAT) there is
    // no such stamp.
    return { status.identity, status.kind,    status.size,
             status.modified, status.created, keepsInodes ? status.changed : clockOfFiles() };
}

bool ItemTrace::isOf(const FileStatus &now, bool keepsInodes) const
{
    if (now.kind != kind || now.identity.device != identity.device)
        return false;
    if (keepsInodes)
        return now.identity == identity && now.created == created;
    return now.modified == modified && (kind == FileKind::Directory || now.size == size);
}

bool ItemTrace::isUntouched(int folder, const QByteArray &name) const
{
    const bool keeps = keepsInodes(folder);
    const auto now = statxStatus(folder, name, Links::NoFollow);
    if (!now || !isOf(*now, keeps) || now->modified != modified)
        return false;
    if (kind != FileKind::Directory)
        return now->size == size;
    const TreeList list = TreeList::of(folder, name);
    if (list.failure())
        return false;
    // The folder itself may have got another name or other permissions: that is no content.
    return std::all_of(list.entries().begin() + 1, list.entries().end(),
                       [&](const TreeList::Entry &inside) {
                           return inside.changed <= taken && (keeps || inside.modified <= taken)
                               && inside.identity.device == identity.device;
                       });
}
