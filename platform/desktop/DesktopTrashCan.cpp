#include "platform/desktop/DesktopTrashCan.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/MountTable.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/SameFile.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"
#include "platform/desktop/MountWatch.h"
#include "platform/desktop/TrashFolder.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

QString reasonText(const std::error_code &failed)
{
    return QString::fromStdString(failed.message());
}

TrashEnd failure(const QString &reason)
{
    return { TrashEnd::Failed, reason };
}

// A Trash, and the item that was listed in it.
struct Found {
    std::optional<TrashFolder> trash;
    QByteArray name;
    TrashEnd end; // unless it was found
    bool isGone = false;
    FileIdentity identity {}; // as it is now
};

Found find(const TrashedItem &item)
{
    Found found { {}, FileName::toBytes(item.name), {} };
    QString why;
    const auto place = TrashPlace::of(item.trash);
    if (place)
        found.trash = TrashFolder::open(*place, &why);
    if (!found.trash) {
        found.end = failure(why.isEmpty() ? localized("Its Trash is gone.") : why);
        return found;
    }
    const auto status = PathText::isItemName(item.name)
        ? statxStatus(found.trash->files(), found.name, Links::NoFollow)
        : std::nullopt;
    found.isGone = !status && errno == ENOENT;
    const bool keepsInodes = found.trash->keepsInodes();
    if (!status)
        found.end = failure(localized("It does not lie in the Trash any more."));
    else if (!ItemTrace::of(item.status, keepsInodes).isOf(*status, keepsInodes))
        found.end = failure(localized("Another item has taken its place in the Trash."));
    else if (FileFlags::isLocked(item.path(), *status))
        found.end = failure(localized("The item is locked."));
    else
        found.identity = status->identity;
    return found;
}

// The folder of a place, made where it is missing if that is wanted. On a volume every step is a
// folder of its own: a link might lead off it, and what was written there came from anywhere.
struct Way {
    Descriptor folder;
    std::error_code failed;
};

Way wayTo(const QString &path, const TrashPlace &trash, TrashCan::Folders folders)
{
    Way way;
    const bool fromBase = trash.onVolume;
    const QByteArray start = fromBase ? FileName::toBytes(trash.base) : QByteArray("/");
    way.folder = Descriptor(::open(start, O_PATH | O_DIRECTORY | O_CLOEXEC));
    way.failed = errorOf(way.folder.number());
    const qsizetype skipped = fromBase && trash.base != u"/" ? trash.base.size() : 0;
    const QByteArrayList steps = FileName::toBytes(path.mid(skipped)).split('/');
    const int following = fromBase ? O_NOFOLLOW : 0;
    for (const QByteArray &step : steps) {
        if (way.failed)
            break;
        if (step.isEmpty())
            continue;
        const auto enter = [&] {
            return Descriptor(SystemCalls::openat(way.folder.number(), step,
                                                  O_PATH | O_DIRECTORY | O_CLOEXEC | following));
        };
        Descriptor next = enter();
        way.failed = errorOf(next.number());
        if (way.failed == std::errc::no_such_file_or_directory
            && folders == TrashCan::Folders::Make) {
            way.failed = errorOf(SystemCalls::mkdirat(way.folder.number(), step, 0777));
            if (!way.failed || way.failed == std::errc::file_exists) {
                next = enter();
                way.failed = errorOf(next.number());
            }
        }
        if (next.isOpen())
            way.folder = std::move(next);
    }
    return way;
}

TrashEnd moveBack(const TrashFolder &trash, const QByteArray &name, const QString &origin,
                  TrashCan::Folders folders)
{
    const QString parent = PathText::parent(origin);
    const Way way = wayTo(parent, trash.place(), folders);
    if (way.failed == std::errc::no_such_file_or_directory)
        return { TrashEnd::NoFolder,
                 filled(localized("Its folder '%@' is gone."), FileName::shown(parent)) };
    if (way.failed)
        return failure(FileName::shown(parent) + u": "_s + reasonText(way.failed));
    // By way of a link it could come back into the Trash, where no record would know it.
    if (SameFile::isInside(parent, trash.place().folder))
        return failure(localized("Its record tells no place to which it could go back."));
    const auto failed = Rename::noReplace(trash.files(), name, way.folder.number(),
                                          FileName::toBytes(PathText::lastComponent(origin)));
    if (failed == std::errc::file_exists)
        return failure(localized("Something stands at its place now."));
    if (failed == std::errc::cross_device_link)
        return failure(localized("Its place lies on another volume than the Trash."));
    if (failed)
        return failure(reasonText(failed));
    trash.removeRecord(name);
    return {};
}

// What an end by force has left on its way out.
void removeLeftovers(const TrashFolder &trash)
{
    const Descriptor expunged = trash.expunged(TrashFolder::IfMissing::Leave);
    QList<QByteArray> names;
    if (expunged.isOpen())
        DirectoryReader::readNames(expunged.number(), names);
    for (const QByteArray &name : std::as_const(names)) {
        const bool isGone = !removeTreeAt(expunged.number(), name, {}, ClosedFolders::Open).failed;
        // The record may be that of another item by now.
        if (isGone && !statxStatus(trash.files(), name, Links::NoFollow) && errno == ENOENT)
            trash.removeRecord(name);
    }
}

// A folder leaves in one step, so that nobody is offered the half of it to put back.
TreeRemovalEnd removeWhole(const TrashFolder &trash, const QByteArray &name, FileKind kind,
                           const FileIdentity &identity)
{
    const Descriptor expunged =
        kind == FileKind::Directory ? trash.expunged(TrashFolder::IfMissing::Make) : Descriptor();
    if (!expunged.isOpen() || Rename::noReplace(trash.files(), name, expunged.number(), name))
        return removeTreeAt(trash.files(), name, identity, ClosedFolders::Open);
    auto end = removeTreeAt(expunged.number(), name, identity, ClosedFolders::Open);
    // What is left of it is still to be seen.
    if (end.failed)
        Rename::noReplace(expunged.number(), name, trash.files(), name);
    return end;
}

TrashedItem itemOf(const TrashFolder &trash, const QByteArray &name, const FileStatus &status)
{
    const auto record = trash.record(name);
    return { .trash = trash.place().folder,
             .name = FileName::fromBytes(name),
             .origin = record.origin,
             .broken = record.broken,
             .deleted = record.deleted,
             .status = status };
}

// `unread` gets a line for each Trash that cannot be read.
template <class Visit>
void forEachItem(const QList<TrashPlace> &places, const Visit &visit, QStringList *unread)
{
    QSet<FileIdentity> seen; // one Trash may be there by several mounts
    for (const TrashPlace &place : places) {
        QString why;
        const auto trash = TrashFolder::open(place, &why);
        if (!trash) {
            if (unread && !why.isEmpty())
                unread->append(FileName::shown(place.folder) + u": "_s + why);
            continue;
        }
        if (seen.contains(trash->identity()))
            continue;
        seen.insert(trash->identity());
        QList<QByteArray> names;
        if (const auto failed = DirectoryReader::readNames(trash->files(), names); failed && unread)
            unread->append(FileName::shown(place.folder) + u": "_s + reasonText(failed));
        for (const QByteArray &name : std::as_const(names))
            if (const auto status = statxStatus(trash->files(), name, Links::NoFollow))
                visit(*trash, name, *status);
    }
}

// A line for each volume that a person sees and whose Trash nobody waits for.
QStringList volumesLeftOut()
{
    QStringList lines;
    const QString volumes = volumesFolder();
    const MountTable table = MountTable::current();
    for (const Mount &mount : table.mounts())
        if (MountTable::isVolume(mount, volumes) && table.slowMountOnTheWay(mount.point))
            lines.append(filled(localized("%@: left out, as it may not answer"),
                                FileName::shown(mount.point)));
    return lines;
}

struct Known {
    TrashedItem item;
    bool keepsInodes;
};

// What takes the place of an identity where inode numbers are made up.
FileIdentity byTime(const FileIdentity &identity, qint64 modified)
{
    return { identity.device, quint64(modified) };
}

// By identity: the names of one file lie there side by side. Only the records of what is wanted are
// read.
QMultiHash<FileIdentity, Known> itemsOf(const QList<TrashCan::Gone> &gone)
{
    QSet<FileIdentity> wanted;
    QStringList folders;
    for (const TrashCan::Gone &each : gone) {
        wanted.insert(each.trace.identity);
        wanted.insert(byTime(each.trace.identity, each.trace.modified));
        if (const QString folder = PathText::parent(each.origin); !folders.contains(folder))
            folders.append(folder);
    }
    QMultiHash<FileIdentity, Known> found;
    forEachItem(
        TrashPlace::all() + TrashPlace::ofVolumesOf(folders),
        [&](const TrashFolder &trash, const QByteArray &name, const FileStatus &status) {
            const FileIdentity key =
                trash.keepsInodes() ? status.identity : byTime(status.identity, status.modified);
            if (wanted.contains(key))
                found.insert(key, { itemOf(trash, name, status), trash.keepsInodes() });
        },
        nullptr);
    return found;
}

// One folder may be known by several names; with the folder gone, its name decides.
bool cameFrom(const TrashedItem &item, const QString &origin)
{
    const QString there = PathText::parent(item.origin);
    const QString here = PathText::parent(origin);
    return item.formerName() == PathText::lastComponent(origin)
        && (there == here
            || SameFile::isSame(there, fileStatus(there, Links::Follow), here,
                                fileStatus(here, Links::Follow)));
}

} // namespace

QList<TrashedItem> DesktopTrashCan::items(QStringList *unread)
{
    for (const TrashPlace &place : TrashPlace::all())
        if (const auto trash = TrashFolder::open(place))
            removeLeftovers(*trash);
    QList<TrashedItem> items;
    forEachItem(
        TrashPlace::all(),
        [&](const TrashFolder &trash, const QByteArray &name, const FileStatus &status) {
            items.append(itemOf(trash, name, status));
        },
        unread);
    if (unread)
        unread->append(volumesLeftOut());
    return items;
}

TrashEnd DesktopTrashCan::putBack(const TrashedItem &item, Folders folders)
{
    const Found found = find(item);
    if (!found.end.reason.isEmpty())
        return found.end;
    const auto record = found.trash->record(found.name);
    if (!record.broken.isEmpty())
        return failure(record.broken);
    if (record.origin != item.origin)
        return failure(localized("Its record was changed."));
    return moveBack(*found.trash, found.name, record.origin, folders);
}

QList<TrashEnd> DesktopTrashCan::putBack(const QList<Gone> &gone, Folders folders)
{
    const auto found = itemsOf(gone);
    QList<TrashEnd> ends;
    ends.reserve(gone.size());
    for (const Gone &wanted : gone) {
        const ItemTrace &trace = wanted.trace;
        auto known =
            found.values(trace.identity) + found.values(byTime(trace.identity, trace.modified));
        known.removeIf(
            [&](const Known &each) { return !trace.isOf(each.item.status, each.keepsInodes); });
        const auto one = std::ranges::find_if(
            known, [&](const Known &each) { return cameFrom(each.item, wanted.origin); });
        ends.append(one != known.end()    ? putBack(one->item, folders)
                        : known.isEmpty() ? failure(localized("It was not found in the Trash."))
                        : !known.first().item.broken.isEmpty()
                        ? failure(known.first().item.broken)
                        : failure(localized("The Trash knows it from another place.")));
    }
    return ends;
}

TrashEnd DesktopTrashCan::remove(const TrashedItem &item)
{
    const Found found = find(item);
    if (found.isGone) {
        found.trash->removeRecord(found.name);
        return {};
    }
    if (!found.end.reason.isEmpty())
        return found.end;
    if (item.status.kind == FileKind::Directory && MountTable::current().anyIn(item.path()))
        return failure(localized("A volume is mounted in it."));
    const auto end = removeWhole(*found.trash, found.name, item.status.kind, found.identity);
    if (end.failed && end.failed != std::errc::no_such_file_or_directory)
        return failure(end.reason());
    // Last: what is left of an item is still known.
    found.trash->removeRecord(found.name);
    return {};
}
