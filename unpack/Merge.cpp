#include "unpack/Merge.h"

#include "files/DirectoryReader.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/Staging.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "unpack/Cancellation.h"

#include <cstdio>
#include <fcntl.h>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

bool isLocked(int folder, const QByteArray &name)
{
    return FileFlags::isLocked(u"/proc/self/fd/%1/"_s.arg(folder) + FileName::fromBytes(name));
}

} // namespace

Merge::Merge(Staging &stagingInUse, QString destination, ToTrash toTrash)
    : staging(stagingInUse)
    , _destination(std::move(destination))
    , _toTrash(std::move(toTrash))
{
}

bool Merge::moveAll(int from, int to)
{
    return moveContents(from, to, {});
}

bool Merge::hasMoved(const QByteArray &path) const
{
    for (qsizetype end = path.size(); end > 0; end = path.lastIndexOf('/', end - 1))
        if (_moved.contains(path.left(end)))
            return true;
    return false;
}

bool Merge::complain(const Item &item, const std::string &reason) const
{
    std::fprintf(stderr, "%s/%s: %s\n", FileName::toBytes(_destination).constData(),
                 item.path.constData(), reason.c_str());
    return false;
}

void Merge::complainOfStaying(const Item &item) const
{
    complain(item, "what stood there is in " + FileName::toBytes(staging.path()).toStdString());
}

bool Merge::moveContents(int from, int to, const QByteArray &path)
{
    QList<QByteArray> names;
    if (const auto failed = DirectoryReader::readNames(from, names))
        return complain({ from, to, {}, path }, failed.message());
    bool whole = true;
    for (const QByteArray &name : std::as_const(names)) {
        if (Cancellation::asked())
            return false;
        whole = moveItem({ from, to, name, path.isEmpty() ? name : path + '/' + name }) && whole;
    }
    return whole;
}

bool Merge::moveItem(const Item &item)
{
    const auto failed = Rename::noReplace(item.from, item.name, item.to, item.name);
    if (!failed) {
        _moved.insert(item.path);
        return true;
    }
    if (failed != std::errc::file_exists)
        return complain(item, failed.message());
    const auto standing = statxStatus(item.to, item.name, Links::NoFollow);
    if (isFolder(standing))
        return moveFolder(item);
    if (isLocked(item.to, item.name))
        return complain(item, "is locked");
    return replace(item);
}

bool Merge::moveFolder(const Item &item)
{
    constexpr int Flags = O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const Descriptor from(SystemCalls::openat(item.from, item.name, O_RDONLY | Flags));
    if (!from.isOpen())
        return complain(item, "a folder stands in the way");
    const Descriptor to(SystemCalls::openat(item.to, item.name, O_PATH | Flags));
    if (!to.isOpen())
        return complain(item, errorOf(-1).message());
    return moveContents(from.number(), to.number(), item.path);
}

bool Merge::replace(const Item &item)
{
    const auto status = statxStatus(item.from, item.name, Links::NoFollow);
    if (!status)
        return complain(item, errorOf(-1).message());
    // As an entry of the staging folder the next start knows it, and what it replaced, if we are
    // killed.
    const QByteArray entry =
        staging.entry({ StagedName::Ready, status->identity.inode, item.name });
    if (const auto failed = Rename::noReplace(item.from, item.name, staging.descriptor(), entry))
        return complain(item, failed.message());
    QByteArray old;
    if (const auto failed = takeName(item, entry, old)) {
        takeBack(item, entry, *status);
        return complain(item, failed.message());
    }
    _moved.insert(item.path);
    if (old.isEmpty())
        return true;
    const auto replaced = statxStatus(staging.descriptor(), old, Links::NoFollow);
    const QString origin = PathText::joined(_destination, FileName::fromBytes(item.path));
    if (replaced && !isFolder(replaced)
        && staging.handOut(old, item.name,
                           [&](const QString &path) { return _toTrash(path, origin); }))
        return true;
    // It stands where it stood, and the new one stays out.
    if (old != entry) {
        Rename::noReplace(item.to, item.name, staging.descriptor(), entry);
        putBack(item, old);
    } else if (Rename::exchange(staging.descriptor(), old, item.to, item.name)) {
        Rename::noReplace(staging.descriptor(), old, item.to, item.name);
    }
    takeBack(item, entry, *status);
    _moved.erase(item.path);
    return complain(item, "cannot be moved to the Trash");
}

void Merge::putBack(const Item &item, const QByteArray &old)
{
    if (Rename::noReplace(staging.descriptor(), old, item.to, item.name))
        complainOfStaying(item);
}

// Only the new item goes back to where all of it is removed. While it stood at the name somebody
// may have gone on with it, or put another one there: that is kept, and the next start sees to it.
void Merge::takeBack(const Item &item, const QByteArray &entry, const FileStatus &made)
{
    const auto now = statxStatus(staging.descriptor(), entry, Links::NoFollow);
    if (!now)
        return;
    if (isUnchanged(made, *now)) {
        Rename::noReplace(staging.descriptor(), entry, item.from, item.name);
        return;
    }
    const QByteArray kept = staging.entry({ StagedName::Old, staging.nextNumber(), item.name });
    Rename::noReplace(staging.descriptor(), entry, staging.descriptor(), kept);
    complainOfStaying(item);
}

// `old` becomes the entry of what stood there.
std::error_code Merge::takeName(const Item &item, const QByteArray &entry, QByteArray &old)
{
    const auto take = [&] {
        return Rename::noReplace(staging.descriptor(), entry, item.to, item.name);
    };
    const auto failed = Rename::exchange(staging.descriptor(), entry, item.to, item.name);
    if (failed == std::errc::no_such_file_or_directory) // it went away meanwhile
        return take();
    if (failed != std::errc::not_supported) {
        old = entry;
        return failed;
    }
    old = staging.entry({ StagedName::Old, staging.nextNumber(), item.name });
    if (const auto stays = Rename::noReplace(item.to, item.name, staging.descriptor(), old))
        return stays;
    const auto taken = take();
    if (taken)
        putBack(item, old);
    return taken;
}
