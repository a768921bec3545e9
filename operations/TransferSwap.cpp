#include "operations/Transfer.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"

#include <fcntl.h>
#include <unistd.h>

// How a new item takes its name, and what becomes of the one that stood there.

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

bool Transfer::isWanted(const FileStatus &found, const Item &item) const
{
    return (!item.shown || isUnchanged(*item.shown, found))
        && !madeHere(FileName::fromBytes(item.to), found);
}

TransferEnd Transfer::place(const Item &item, const Arrival &arrival)
{
    _arrived = arrival.made.identity;
    if (_operation == Operation::Move)
        noteArrival(item, _arrived);
    if (item.standing == Standing::Refuse) {
        const auto reason = arrival.take(_destination.number(), item.to);
        if (reason == std::errc::file_exists)
            return { TransferEnd::NotAsShown };
        _isPlaced = !reason;
        return reason ? failed(reason, item.to) : TransferEnd { TransferEnd::Done };
    }
    if (const auto reason = _staging.open())
        return notStaged(reason, item);
    const QByteArray entry = _staging.entry({ StagedName::Ready, _arrived.inode, item.to });
    if (const auto reason = arrival.take(_staging.descriptor(), entry))
        return failed(reason, item.to);
    TransferEnd end = swapIn(item, entry);
    _isPlaced = end.what == TransferEnd::Done;
    if (_isPlaced)
        return end;
    const auto back = statxStatus(_staging.descriptor(), entry, Links::NoFollow);
    const bool waits = end.what == TransferEnd::NotAsShown && arrival.giveBack && back
        && back->identity == _arrived && !arrival.giveBack(_staging.descriptor(), entry);
    if (!waits)
        discard(entry, arrival.made, item.to);
    return end;
}

void Transfer::discard(const QByteArray &entry, const FileStatus &made, const QByteArray &name)
{
    // While it stood at the name somebody may have gone on with it.
    const auto now = statxStatus(_staging.descriptor(), entry, Links::NoFollow);
    if (now && now->identity == made.identity && !isUnchanged(made, *now))
        return _pending.save(entry, name, std::make_error_code(std::errc::device_or_resource_busy));

    const auto failed =
        removeTreeAt(_staging.descriptor(), entry, made.identity, ClosedFolders::Open).failed;
    // What came out of the last exchange may be what somebody put at the name meanwhile.
    const auto left = statxStatus(_staging.descriptor(), entry, Links::NoFollow);
    if (left && left->identity != made.identity)
        _pending.save(entry, name, failed);
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
    const auto unknown = errorOf(old ? 0 : -1);
    const bool wanted = old && isWanted(*old, item);
    const bool kept =
        wanted && (item.standing == Standing::Replace || _pending.trash(entry, item.to));
    if (kept) {
        noteReplaced(item, *old);
        if (item.standing == Standing::Replace)
            _pending.addReplaced(entry, item.to, *old);
        return { TransferEnd::Done };
    }
    if (const auto back = exchange()) { // then it is to be seen somewhere at least
        _pending.save(entry, item.to, back);
        return { TransferEnd::Done };
    }
    if (unknown)
        return failed(unknown, item.to);
    if (!wanted)
        return { TransferEnd::NotAsShown };
    return { TransferEnd::Failed, localized("The existing item cannot be moved to the Trash.") };
}

TransferEnd Transfer::setAside(const Item &item, const std::function<std::error_code()> &take)
{
    if (const auto reason = _staging.open())
        return notStaged(reason, item);
    const QByteArray old = _staging.entry({ StagedName::Old, _staging.nextNumber(), item.to });
    const auto away = Rename::noReplace(_destination.number(), item.to, _staging.descriptor(), old);
    if (away == std::errc::no_such_file_or_directory)
        return { TransferEnd::NotAsShown };
    if (away)
        return failed(away, item.to);
    const auto status = statxStatus(_staging.descriptor(), old, Links::NoFollow);
    auto reason = errorOf(status ? 0 : -1);
    const bool wanted = status && isWanted(*status, item);
    if (wanted)
        reason = take();
    if (!wanted || reason) {
        if (const auto back =
                Rename::noReplace(_staging.descriptor(), old, _destination.number(), item.to))
            _pending.save(old, item.to, back);
        if (reason == std::errc::cross_device_link)
            return { .crossesDevices = true };
        return reason && reason != std::errc::file_exists ? failed(reason, item.to)
                                                          : TransferEnd { TransferEnd::NotAsShown };
    }
    noteReplaced(item, *status);
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
    if (_crossesDevices) {
        // Known from an item before it.
    } else if (item.standing == Standing::Refuse) {
        const auto reason =
            Rename::noReplace(_source.number(), item.from, _destination.number(), item.to);
        if (reason == std::errc::file_exists)
            return { TransferEnd::NotAsShown };
        if (reason != std::errc::cross_device_link)
            return reason ? notMoved(reason, item) : TransferEnd { TransferEnd::Done };
    } else if (TransferEnd end = moveOver(item); !end.crossesDevices) {
        return end;
    }
    if (item.status.kind != FileKind::Regular)
        return copyByProgram(item);
    const TreeList list = TreeList::of(_source.number(), item.from);
    if (list.failure())
        return failed(list.failure(), item.from, true);
    TransferEnd end = copyFile(item);
    if (end.what == TransferEnd::Done)
        _pending.addMoved(list);
    return end;
}

// A name goes from one folder to another: where the second may be written to, the first may not.
TransferEnd Transfer::notMoved(const std::error_code &reason, const Item &item) const
{
    const bool refused =
        reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted;
    const bool atSource = refused && ::faccessat(_destination.number(), ".", W_OK, AT_EACCESS) == 0;
    return failed(reason, atSource ? item.from : item.to, atSource);
}

// Without it the next start has less to tell, no more.
void Transfer::noteArrival(const Item &item, const FileIdentity &arrival)
{
    _staging.note({ u"arrived"_s, _sourcePath, FileName::fromBytes(item.from),
                    QString::number(item.status.identity.inode), QString::number(arrival.inode) });
}

void Transfer::tellLost(const Item &item, const std::error_code &why)
{
    _lost += filled(localized("Not every attribute of '%@' came along: %@"),
                    FileName::shown(FileName::fromBytes(item.from)),
                    QString::fromStdString(why.message()));
}

TransferEnd Transfer::moveOver(const Item &item)
{
    const auto exchange = [&] {
        return Rename::exchange(_source.number(), item.from, _destination.number(), item.to);
    };
    if (const auto closed = _staging.open())
        return notStaged(closed, item);
    const Found standing = atDestination(FileName::fromBytes(item.to));
    if (standing.failure)
        return failed(standing.failure, item.to);
    if (!standing.status)
        return { TransferEnd::NotAsShown };
    if (const auto unknown = _staging.note(
            { u"moved"_s, _sourcePath, FileName::fromBytes(item.from),
              QString::number(item.status.identity.inode),
              u"%1 %2"_s.arg(standing.status->identity.inode).arg(standing.status->modified) }))
        return notStaged(unknown, item);
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
        return notMoved(reason, item);
    return takeExchanged(item, *standing.status, exchange);
}

// The names are exchanged: what is replaced stands at the source, where anybody may come to it.
TransferEnd Transfer::takeExchanged(const Item &item, const FileStatus &before,
                                    const std::function<std::error_code()> &exchange)
{
    TransferEnd end { TransferEnd::NotAsShown };
    const auto old = statxStatus(_source.number(), item.from, Links::NoFollow);
    if (!old)
        end = failed(errorOf(-1), item.from, true);
    if (old && isWanted(*old, item)) {
        const QByteArray entry =
            _staging.entry({ StagedName::Old, _staging.nextNumber(), item.to });
        const auto back = [&](const std::error_code &why) {
            const auto stays =
                Rename::noReplace(_staging.descriptor(), entry, _source.number(), item.from);
            if (stays)
                _pending.save(entry, item.to, why);
            return !stays;
        };
        const auto away =
            Rename::noReplace(_source.number(), item.from, _staging.descriptor(), entry);
        const auto now =
            away ? std::nullopt : statxStatus(_staging.descriptor(), entry, Links::NoFollow);
        if (away == std::errc::no_such_file_or_directory)
            return { TransferEnd::Done }; // somebody took it away
        if (away) {
            end = failed(away, item.from, true);
        } else if (!now || !isUnchanged(before, *now)) { // somebody came to it
            back(std::make_error_code(std::errc::device_or_resource_busy));
            return { TransferEnd::Done };
        } else if (item.standing == Standing::Replace) {
            noteReplaced(item, *old);
            _pending.addReplaced(entry, item.to, *old);
            return { TransferEnd::Done };
        } else if (_pending.trash(entry, item.to)
                   || !back(std::make_error_code(std::errc::operation_not_permitted))) {
            noteReplaced(item, *old);
            return { TransferEnd::Done };
        } else {
            end = { TransferEnd::Failed,
                    localized("The existing item cannot be moved to the Trash.") };
        }
    }
    const auto stays = exchange();
    if (!stays)
        return end;
    return { TransferEnd::Failed,
             filled(
                 localized("'%@' and '%@' have changed places."),
                 FileName::shown(PathText::joined(_sourcePath, FileName::fromBytes(item.from))),
                 FileName::shown(PathText::joined(_destinationPath, FileName::fromBytes(item.to))))
                 + u' ' + QString::fromStdString(stays.message()) };
}
