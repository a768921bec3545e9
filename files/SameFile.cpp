#include "files/SameFile.h"
#include "files/FileName.h"
#include "files/StatxStatus.h"

#include <QVarLengthArray>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Where a folder lies in its file system, whatever mount it was reached by.
struct Place {
    quint64 device = 0;
    QString path;
};

std::optional<Place> placeOf(const QString &folder, const MountTable &table)
{
    char resolved[PATH_MAX];
    if (!::realpath(FileName::toBytes(folder).constData(), resolved))
        return std::nullopt;
    const QString path = FileName::fromBytes(resolved);
    const Mount *mount = table.mountOf(path);
    if (!mount)
        return std::nullopt;
    QString below = mount->point == u"/" ? path : path.mid(mount->point.size());
    if (mount->root != u"/")
        below.prepend(mount->root);
    while (below.endsWith(u'/'))
        below.chop(1);
    return Place { mount->device, below };
}

// Of the item itself and, where it is a link, of what it leads to.
QVarLengthArray<FileIdentity, 2> identitiesOf(const QString &path,
                                              const std::optional<FileStatus> &itself)
{
    QVarLengthArray<FileIdentity, 2> identities;
    if (itself)
        identities.append(itself->identity);
    if (itself && itself->kind == FileKind::Symlink)
        if (const auto target = fileStatus(path, Links::Follow))
            identities.append(target->identity);
    return identities;
}

// Follows ".." from a folder up to the root.
bool isBelow(const QString &inner, const FileIdentity &folder)
{
    int at = ::open(FileName::toBytes(inner).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    std::optional<FileIdentity> last;
    bool found = false;
    while (at >= 0 && !found) {
        const auto status = statxStatus(at, ".", Links::NoFollow);
        if (!status || status->identity == last)
            break;
        last = status->identity;
        found = *last == folder;
        const int up = ::openat(at, "..", O_PATH | O_DIRECTORY | O_CLOEXEC);
        ::close(at);
        at = up;
    }
    if (at >= 0)
        ::close(at);
    return found;
}

} // namespace

bool SameFile::isSame(const QString &a, const QString &b)
{
    return isSame(a, fileStatus(a, Links::NoFollow), b, fileStatus(b, Links::NoFollow));
}

bool SameFile::isSame(const QString &a, const std::optional<FileStatus> &itself, const QString &b,
                      const std::optional<FileStatus> &other)
{
    const auto first = identitiesOf(a, itself);
    const auto second = identitiesOf(b, other);
    return std::ranges::any_of(
        first, [&](const FileIdentity &identity) { return second.contains(identity); });
}

bool SameFile::isInside(const QString &inner, const QString &folder, const MountTable &table)
{
    const auto status = fileStatus(folder, Links::NoFollow);
    if (!status || status->kind != FileKind::Directory)
        return false;
    if (isBelow(inner, status->identity))
        return true;
    // A part of the folder may be mounted elsewhere a second time.
    const auto a = placeOf(inner, table);
    const auto b = placeOf(folder, table);
    return a && b && a->device == b->device
        && (a->path == b->path || a->path.startsWith(b->path + u'/'));
}
