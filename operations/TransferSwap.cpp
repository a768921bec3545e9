#include "operations/Transfer.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"
#include "platform/Workspace.h"

// How a new item takes its name, and what becomes of the one that stood there.

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

bool Transfer::isWanted(const FileStatus &found, const std::optional<FileStatus> &shown) const
{
    return (!shown || isUnchanged(*shown, found)) && !madeHere(found);
}

TransferEnd Transfer::place(const Item &item, const Arrival &arrival)
{
    if (item.standing == Standing::Refuse) {
        const auto reason = arrival.take(_destination.number(), item.to);
        if (reason == std::errc::file_exists)
            return { TransferEnd::NotAsShown };
        return reason ? failed(reason, item.to) : TransferEnd { TransferEnd::Done };
    }
    if (const auto reason = _staging.open())
        return failed(reason, item.to);
    const QByteArray entry =
        StagedName { StagedName::Ready, arrival.identity.inode, item.to }.text();
    if (const auto reason = arrival.take(_staging.descriptor(), entry))
        return failed(reason, item.to);
    TransferEnd end = swapIn(item, entry);
    const bool waits = end.what == TransferEnd::NotAsShown && arrival.giveBack
        && !arrival.giveBack(_staging.descriptor(), entry);
    if (end.what != TransferEnd::Done && !waits)
        removeTreeAt(_staging.descriptor(), entry, arrival.identity, ClosedFolders::Open);
    return end;
}

TransferEnd Transfer::swapIn(const Item &item, const QByteArray &entry)
{
    const auto exchange = [&] {
        return Rename::exchange(_staging.descriptor(), entry, _destination.number(), item.to);
    };
    const auto reason = exchange();
    if (reason == std::errc::no_such_file_or_directory) // it went away meanwhile
        return { TransferEnd::NotAsShown };
    if (reason == std::errc::not_supported)
        return setAside(item, [&] {
            return Rename::noReplace(_staging.descriptor(), entry, _destination.number(), item.to);
        });
    if (reason)
        return failed(reason, item.to);
    const auto old = statxStatus(_staging.descriptor(), entry, Links::NoFollow);
    const bool wanted = old && isWanted(*old, item.shown);
    const bool kept =
        wanted && (item.standing == Standing::Replace || _pending.trash(entry, item.to));
    if (kept) {
        if (item.standing == Standing::Replace)
            _pending.addReplaced(entry, item.to, *old);
        return { TransferEnd::Done };
    }
    if (const auto back = exchange()) { // then it is to be seen somewhere at least
        _pending.save(entry, item.to, back);
        return { TransferEnd::Done };
    }
    if (!wanted)
        return { TransferEnd::NotAsShown };
    return { TransferEnd::Failed, localized("The existing item cannot be moved to the Trash.") };
}

TransferEnd Transfer::setAside(const Item &item, const std::function<std::error_code()> &take)
{
    if (const auto reason = _staging.open())
        return failed(reason, item.to);
    const QByteArray old = StagedName { StagedName::Old, _staging.nextNumber(), item.to }.text();
    const auto away = Rename::noReplace(_destination.number(), item.to, _staging.descriptor(), old);
    if (away == std::errc::no_such_file_or_directory)
        return { TransferEnd::NotAsShown };
    if (away)
        return failed(away, item.to);
    const auto status = statxStatus(_staging.descriptor(), old, Links::NoFollow);
    const bool wanted = status && isWanted(*status, item.shown);
    const auto reason = wanted ? take() : std::error_code();
    if (!wanted || reason) {
        if (const auto back =
                Rename::noReplace(_staging.descriptor(), old, _destination.number(), item.to))
            _pending.save(old, item.to, back);
        if (reason == std::errc::cross_device_link)
            return { .crossesDevices = true };
        return reason && reason != std::errc::file_exists ? failed(reason, item.to)
                                                          : TransferEnd { TransferEnd::NotAsShown };
    }
    if (item.standing == Standing::Replace)
        _pending.addReplaced(old, item.to, *status);
    else if (!_pending.trash(old, item.to))
        _pending.save(old, item.to, std::make_error_code(std::errc::operation_not_permitted));
    return { TransferEnd::Done };
}

TransferEnd Transfer::move(const Item &item)
{
    if (item.status.mountPoint)
        return failed(std::make_error_code(std::errc::device_or_resource_busy), item.from, true);
    if (item.standing == Standing::Refuse) {
        const auto reason =
            Rename::noReplace(_source.number(), item.from, _destination.number(), item.to);
        if (reason == std::errc::file_exists)
            return { TransferEnd::NotAsShown };
        if (reason != std::errc::cross_device_link)
            return reason ? failed(reason, item.to) : TransferEnd { TransferEnd::Done };
    } else if (TransferEnd end = moveOver(item); !end.crossesDevices) {
        return end;
    }
    if (item.status.kind != FileKind::Regular)
        return copyByProgram(item);
    const TreeList list = TreeList::of(_source.number(), item.from);
    _staging.note({ u"arrived"_s, _sourcePath, FileName::fromBytes(item.from),
                    QString::number(item.status.identity.inode) });
    TransferEnd end = copyFile(item);
    if (end.what == TransferEnd::Done)
        _pending.addMoved(list);
    return end;
}

TransferEnd Transfer::moveOver(const Item &item)
{
    const auto exchange = [&] {
        return Rename::exchange(_source.number(), item.from, _destination.number(), item.to);
    };
    if (const auto closed = _staging.open())
        return failed(closed, item.to);
    if (!_staging.note({ u"moved"_s, _sourcePath, FileName::fromBytes(item.from),
                         QString::number(item.status.identity.inode) }))
        return failed(std::make_error_code(std::errc::io_error), item.to);
    const auto reason = exchange();
    if (reason == std::errc::cross_device_link)
        return { .crossesDevices = true };
    if (reason == std::errc::no_such_file_or_directory)
        return { TransferEnd::NotAsShown };
    if (reason == std::errc::not_supported)
        return setAside(item, [&] {
            return Rename::noReplace(_source.number(), item.from, _destination.number(), item.to);
        });
    if (reason)
        return failed(reason, item.to);
    const auto old = statxStatus(_source.number(), item.from, Links::NoFollow);
    const bool wanted = old && isWanted(*old, item.shown);
    if (wanted && item.standing == Standing::Replace) {
        _pending.addLeftAtSource(item.to, *old);
        return { TransferEnd::Done };
    }
    if (wanted
        && workspace.moveToTrash(PathText::joined(_sourcePath, FileName::fromBytes(item.from)),
                                 nullptr,
                                 PathText::joined(_destinationPath, FileName::fromBytes(item.to))))
        return { TransferEnd::Done };
    if (const auto back = exchange())
        return failed(back, item.to);
    if (!wanted)
        return { TransferEnd::NotAsShown };
    return { TransferEnd::Failed, localized("The existing item cannot be moved to the Trash.") };
}
