#include "operations/Undoing.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/FolderMark.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "operations/Refusal.h"
#include "operations/SmallPrint.h"
#include "operations/SyncRemovable.h"
#include "platform/Alerts.h"
#include "platform/TrashCan.h"

#include <fcntl.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The whole Trash is looked through for each lot, and between two the person may cancel: each is
// twice as large as the one before, so that there are few.
constexpr qsizetype FirstFromTrash = 500;

QString placeTaken()
{
    return localized("Another item stands at its old place.");
}

// The same folder may be on a device of another number once that was put in again.
bool isSameDisk(const FileIdentity &was, const FileIdentity &is)
{
    return was.device == is.device || was.inode == is.inode;
}

bool isEmptyFolder(int above, const QByteArray &name)
{
    DirectoryReader reader;
    bool isEmpty = true;
    return !reader.openAt(above, name) && !reader.read([&](const DirectoryItem &) {
        isEmpty = false;
        return false;
    }) && isEmpty;
}

} // namespace

Undoing::Undoing(const Tools &tools)
    : _tools(tools)
{
}

Undoing::~Undoing() = default;

DoneItems Undoing::undo(const DoneItems &done) // worker thread
{
    const QList<DoneItem> &items = done.items();
    qsizetype count = items.size();
    qsizetype most = FirstFromTrash;
    while (count > 0 && !_tools.isCancelled()) {
        if (items[count - 1].way == DoneItem::Trashed) {
            const qsizetype some = qMin(count, std::exchange(most, 2 * most));
            count -= some;
            putBackDeleted(items.mid(count, some));
        } else {
            undoOne(items[--count]);
        }
    }
    endTransfer();
    putBackReplaced();
    DoneItems left;
    for (const DoneItem &item : items.first(count))
        left.add(item);
    return left;
}

void Undoing::undoOne(const DoneItem &item)
{
    if (const QString reason = undoItem(item); !reason.isEmpty())
        return refuse(item, reason);
    _anyUndone = true;
    if (item.replaced == DoneItem::InTrash)
        _replaced.append(item);
    if (item.replaced == DoneItem::ForGood)
        tell(item.name(), localized("It is back, but what it had replaced is gone for good."));
}

QString Undoing::undoItem(const DoneItem &item)
{
    if (item.way == DoneItem::Renamed)
        return renameBack(item);
    return item.way == DoneItem::Moved ? moveBack(item) : discard(item);
}

void Undoing::putBackDeleted(const QList<DoneItem> &items)
{
    QList<TrashCan::Gone> gone;
    for (const DoneItem &item : items)
        gone.append({ item.trace, item.from.path() });
    const QList<TrashEnd> ends = _tools.workspace.trashCan().putBack(gone);
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (ends[i].what == TrashEnd::Done)
            _anyUndone = true;
        else
            refuse(items[i], ends[i].reason);
    }
}

void Undoing::putBackReplaced()
{
    if (_replaced.isEmpty())
        return;
    QList<TrashCan::Gone> gone;
    for (const DoneItem &item : std::as_const(_replaced))
        gone.append({ item.old, item.to.path() });
    const QList<TrashEnd> ends = _tools.workspace.trashCan().putBack(gone);
    for (qsizetype i = 0; i < _replaced.size(); ++i)
        if (ends[i].what != TrashEnd::Done)
            tell(_replaced[i].name(),
                 filled(localized("What it had replaced is not back: %@"), ends[i].reason));
}

QString Undoing::renameBack(const DoneItem &item)
{
    if (QString reason = reasonAgainst(item); !reason.isEmpty())
        return reason;
    const auto failed = FileSystem::renameItem(item.to.path(), item.from.path());
    if (failed == std::errc::file_exists)
        return placeTaken();
    return failed ? QString::fromStdString(failed.message()) : QString();
}

QString Undoing::moveBack(const DoneItem &item)
{
    if (QString reason = reasonAgainst(item); !reason.isEmpty())
        return reason;
    const auto seen = fileStatus(item.from.folder, Links::Follow);
    if (seen && !isSameDisk(item.fromFolder, seen->identity))
        return localized("Another disk is at its old place, or none.");
    Transfer &transfer = transferFor(item);
    const QString &name = item.to.name;
    const auto given = transfer.atSource(name).status;
    const auto standing = transfer.atDestination(name);
    if (standing.failure)
        return FileName::shown(item.from.folder) + u": "_s
            + QString::fromStdString(standing.failure.message());
    if (standing.status)
        return placeTaken();
    QString refused = refusalOf(item.to.path(), given, item.from.path(), {}, Operation::Move);
    if (!refused.isNull())
        return refused;
    if (given && !transfer.crossesDevices() && transfer.moveToFree(name, *given))
        return {};
    const TransferEnd end = transfer.put(name, Standing::Refuse);
    return end.what == TransferEnd::Done      ? QString()
        : end.what == TransferEnd::NotAsShown ? placeTaken()
                                              : end.reason;
}

QString Undoing::discard(const DoneItem &item)
{
    if (item.replaced == DoneItem::ForGood)
        return localized("It stays, for what it has replaced is gone for good.");
    QString reason = reasonAgainst(item);
    if (reason.isEmpty())
        reason = changeOf(item);
    if (!reason.isEmpty())
        return reason;
    if (!_trash)
        _trash = _tools.workspace.trashRun(item.to.folder);
    reason = _trash->refusal(item.to.name);
    return reason.isEmpty() && _trash->move(item.to.name, &reason) ? QString() : reason;
}

QString Undoing::reasonAgainst(const DoneItem &item)
{
    if (const auto closed = hold(item.to.folder))
        return FileName::shown(item.to.folder) + u": "_s + QString::fromStdString(closed.message());
    const auto now =
        statxStatus(_folder.number(), FileName::toBytes(item.to.name), Links::NoFollow);
    if (!now)
        return QString::fromStdString(SystemCalls::errorOf(-1).message());
    if (!item.trace.isOf(*now, _keepsInodes))
        return localized("Another item has come to its place.");
    if (FileFlags::isLocked(item.to.path(), *now))
        return localized("The item is locked.");
    return {};
}

QString Undoing::changeOf(const DoneItem &item) const
{
    const QByteArray name = FileName::toBytes(item.to.name);
    if (item.way == DoneItem::NewFolder)
        return isEmptyFolder(_folder.number(), name) ? QString()
                                                     : localized("It is not empty any more.");
    return item.trace.isUntouched(_folder.number(), name)
        ? QString()
        : localized("It was changed since, or something in it was.");
}

std::error_code Undoing::hold(const QString &folder)
{
    if (_folder.isOpen() && _folderPath == folder)
        return {};
    _folderPath = folder;
    _trash.reset();
    _folder = Descriptor(
        SystemCalls::openat(AT_FDCWD, FileName::toBytes(folder), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!_folder.isOpen())
        return SystemCalls::errorOf(-1);
    _keepsInodes = keepsInodes(_folder.number());
    return {};
}

Transfer &Undoing::transferFor(const DoneItem &item)
{
    if (!_transfer || _transferFrom != item.to.folder || _transferTo != item.from.folder) {
        endTransfer();
        _transferFrom = item.to.folder;
        _transferTo = item.from.folder;
        _transfer =
            std::make_unique<Transfer>(Operation::Move, _transferFrom, _transferTo, _tools.programs,
                                       _tools.workspace, _tools.journal, _tools.showLine);
    }
    return *_transfer;
}

void Undoing::endTransfer()
{
    if (!_transfer)
        return;
    _told += _transfer->finish();
    _transfer.reset();
    if (const auto unwritten = syncIfRemovable(_transferTo))
        _told += unwritten->details;
}

void Undoing::tell(const QString &name, const QString &reason)
{
    _told += lineAbout(name, reason);
}

void Undoing::refuse(const DoneItem &item, const QString &reason)
{
    _refused.append(item);
    tell(item.name(), reason);
}
