#include "operations/Transfer.h"

#include "base/Localized.h"
#include "files/FileCopy.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/FolderMark.h"
#include "files/FolderWalk.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"
#include "operations/CopyProgress.h"
#include "platform/Programs.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

constexpr qint64 MonitoredSize = 16 * 1024 * 1024; // bytes; smaller files are copied in no time

// Searching is enough for the source; the destination is read for writing it out.
Descriptor openFolder(const QString &path, int mode)
{
    const QByteArray bytes = FileName::toBytes(path);
    Descriptor folder(SystemCalls::openat(AT_FDCWD, bytes, mode | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() && errno == EACCES && mode != O_PATH)
        return openFolder(path, O_PATH);
    return folder;
}

Transfer::Found find(int folder, const QString &name)
{
    const auto status = statxStatus(folder, FileName::toBytes(name), Links::NoFollow);
    if (status)
        return { status, {} };
    const auto failed = errorOf(-1);
    const bool absent =
        failed == std::errc::no_such_file_or_directory || failed == std::errc::not_a_directory;
    return { std::nullopt, absent ? std::error_code() : failed };
}

} // namespace

Transfer::Transfer(Operation operation, const QString &source, const QString &destination,
                   Programs &programsToRun, Workspace &workspace, const Journal &journal,
                   ShowLine showLine, const std::optional<FileIdentity> &seen)
    : _operation(operation)
    , _sourcePath(source)
    , _destinationPath(destination)
    , programs(programsToRun)
    , _showLine(std::move(showLine))
    , _source(openFolder(source, O_PATH))
    , _noSource(errorOf(_source.number()))
    , _destination(openFolder(destination, O_RDONLY))
    , _noDestination(errorOf(_destination.number()))
    , _removesList(FileCopy::handsOnAccessList(_destination.number()))
    , _isFlushedByFile(FileCopy::isFlushedByFile(_destination.number()))
    , _staging(_destination.number(), destination, journal)
    , _pending(_source.number(), _destination.number(), destination, _staging, workspace)
    , _keepsInodes(keepsInodes(_destination.number()))
{
    if (const auto from = _noSource ? std::nullopt : statusOf(_source.number()))
        _sourceFolder = from->identity;
    const auto opened = seen && !_noDestination ? statusOf(_destination.number()) : std::nullopt;
    if (opened && opened->identity != *seen)
        _noDestination = std::make_error_code(std::errc::resource_unavailable_try_again);
}

Transfer::~Transfer()
{
    discardMade();
    _pending.settle();
}

QStringList Transfer::finish()
{
    _pending.settle();
    return _lost + _pending.told();
}

Transfer::Found Transfer::atSource(const QString &name) const
{
    return _noSource ? Found { std::nullopt, _noSource } : find(_source.number(), name);
}

Transfer::Found Transfer::atDestination(const QString &name) const
{
    return _noDestination ? Found { std::nullopt, _noDestination }
                          : find(_destination.number(), name);
}

TransferEnd Transfer::failed(const std::error_code &reason, const QByteArray &name,
                             bool atSource) const
{
    _noSpace = reason == std::errc::no_space_on_device
        || reason == std::error_code(EDQUOT, std::generic_category());
    const QString path =
        PathText::joined(atSource ? _sourcePath : _destinationPath, FileName::fromBytes(name));
    return { TransferEnd::Failed,
             FileName::shown(path) + u": "_s + QString::fromStdString(reason.message()) };
}

// Nothing is wrong with the folders where only the note about them cannot be written.
TransferEnd Transfer::notStaged(const std::error_code &reason, const Item &item) const
{
    TransferEnd end = failed(reason, item.to);
    if (_staging.noNote())
        end.reason = FileName::shown(Journal::runsFolder()) + u": "_s
            + QString::fromStdString(reason.message());
    return end;
}

TransferEnd Transfer::put(const QString &name, Standing standing,
                          const std::optional<FileStatus> &shown)
{
    return putAs(name, name, standing, shown);
}

TransferEnd Transfer::putAs(const QString &name, const QString &as, Standing standing,
                            const std::optional<FileStatus> &shown)
{
    Item item { FileName::toBytes(name), FileName::toBytes(as), {}, standing, shown };
    if (_noDestination)
        return failed(_noDestination, {});
    const Found found = atSource(name);
    if (!found.status)
        return failed(found.failure ? found.failure
                                    : std::make_error_code(std::errc::no_such_file_or_directory),
                      item.from, true);
    item.status = *found.status;
    _noSpace = false;
    TransferEnd end = attempt(item);
    // What was replaced before may hold the space that this one needs.
    if (end.what == TransferEnd::Failed && _noSpace && !_pending.isEmpty()) {
        _pending.settle();
        end = attempt(item);
    }
    if (end.what == TransferEnd::Done || _isPlaced)
        noteDone(item, _operation == Operation::Move ? DoneItem::Moved : DoneItem::Copied);
    if (end.what == TransferEnd::Done) {
        noteMade(as, _arrived);
        _pending.settleDue();
    }
    return end;
}

bool Transfer::moveToFree(const QString &name, const FileStatus &given)
{
    if (_noDestination || given.mountPoint)
        return false;
    const QByteArray bytes = FileName::toBytes(name);
    if (const auto failed =
            Rename::noReplace(_source.number(), bytes, _destination.number(), bytes)) {
        _crossesDevices = failed == std::errc::cross_device_link && given.kind == FileKind::Regular;
        return false;
    }
    noteMade(name, given.identity);
    _done.add({ .way = DoneItem::Moved,
                .from = { _sourcePath, name },
                .fromFolder = _sourceFolder,
                .to = { _destinationPath, name },
                .trace = ItemTrace::of(given) });
    return true;
}

void Transfer::noteReplaced(const Item &item, const FileStatus &old)
{
    _replacing.replaced =
        item.standing == Standing::ToTrash ? DoneItem::InTrash : DoneItem::ForGood;
    _replacing.old = ItemTrace::of(old);
}

void Transfer::noteDone(const Item &item, DoneItem::Way way)
{
    const QString as = FileName::fromBytes(item.to);
    const bool isRenamed = _arrived == item.status.identity;
    const auto now = isRenamed ? item.status : atDestination(as).status;
    if (!now || (_keepsInodes && now->identity != _arrived))
        return; // somebody else came to it
    DoneItem done = _replacing;
    done.way = way;
    if (way == DoneItem::Moved) {
        done.from = { _sourcePath, FileName::fromBytes(item.from) };
        done.fromFolder = _sourceFolder;
    }
    done.to = { _destinationPath, as };
    done.trace = ItemTrace::of(*now, _keepsInodes);
    _done.add(done);
}

void Transfer::noteMade(const QString &name, const FileIdentity &identity)
{
    _made.insert(identity);
    const auto status = _keepsInodes ? std::nullopt : atDestination(name).status;
    if (status)
        _madeByName.insert(name.toCaseFolded(), *status);
}

// Where numbers are made up, one item may have another by another case of its name.
bool Transfer::madeHere(const QString &name, const FileStatus &status) const
{
    if (_made.contains(status.identity))
        return true;
    const auto made = _madeByName.constFind(name.toCaseFolded());
    return made != _madeByName.cend() && made->kind == status.kind && made->size == status.size
        && made->modified == status.modified;
}

TransferEnd Transfer::attempt(const Item &item)
{
    _arrived = item.status.identity; // unless a copy does
    _isPlaced = false;
    _replacing = {};
    if (_operation == Operation::Move)
        return move(item);
    return item.status.kind == FileKind::Regular ? copyFile(item) : copyByProgram(item);
}

TransferEnd Transfer::copyFile(const Item &item)
{
    const Descriptor source(SystemCalls::openat(
        _source.number(), item.from, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat properties { };
    if (const auto reason = errorOf(source.isOpen() ? ::fstat(source.number(), &properties) : -1))
        return failed(reason, item.from, true);
    if (properties.st_ino != item.status.identity.inode || !S_ISREG(properties.st_mode))
        return failed(std::make_error_code(std::errc::resource_unavailable_try_again), item.from,
                      true);
    StagedFile staged(_destination.number(), _staging);
    auto reason = staged.make();
    std::error_code lost;
    if (!reason) {
        std::atomic<qint64> done { 0 };
        std::optional<CopyProgress> progress;
        if (item.status.size >= MonitoredSize && _showLine)
            progress.emplace([&] { return item.status.size; }, [&] { return done.load(); },
                             _showLine);
        reason = FileCopy::copyContent(source.number(), properties, staged.descriptor(),
                                       progress ? &done : nullptr);
    }
    if (!reason)
        reason = FileCopy::copyProperties(source.number(), properties, staged.descriptor(),
                                          _removesList, lost);
    if (!reason && lost && _operation == Operation::Move)
        reason = lost;
    const bool removes = _operation == Operation::Move || item.standing != Standing::Refuse;
    if (!reason)
        reason = FileCopy::finish(staged.descriptor(), removes && _isFlushedByFile);
    if (reason)
        return failed(reason, item.to);
    const auto made = statusOf(staged.descriptor());
    if (!made)
        return failed(errorOf(-1), item.to);
    TransferEnd end = place(item, { *made, [&](int folder, const QByteArray &to) {
                                       return staged.takeName(folder, to);
                                   } });
    if (lost && end.what == TransferEnd::Done)
        tellLost(item, lost);
    return end;
}

TransferEnd Transfer::copyByProgram(const Item &item)
{
    if (const auto reason = _staging.open())
        return notStaged(reason, item);
    const QByteArray entry = _staging.entry({ StagedName::Making, _staging.nextNumber(), item.to });
    const QString source = PathText::joined(_sourcePath, FileName::fromBytes(item.from));
    const QString target = u"./"_s + FileName::fromBytes(entry);
    const QString made = PathText::joined(_staging.heldPath(), FileName::fromBytes(entry));
    const bool moves = _operation == Operation::Move;
    TreeList list;
    QStringList marked;
    if (moves) // before the copy: what comes later is not of it
        list = TreeList::of(_source.number(), item.from);
    ProgramEnd end;
    {
        std::atomic<bool> stop { false };
        const CopyProgress progress(
            [&] {
                if (!moves)
                    list = TreeList::of(_source.number(), item.from);
                marked = list.withAttributes(_source.number());
                return list.bytes();
            },
            [&] {
                qint64 bytes = 0;
                walkFiles(made, stop, [&](qint64 size) { bytes += size; });
                return bytes;
            },
            _showLine);
        // By a name in its own working folder: /proc may hide from it what is open here.
        end = programs.runAt(_staging.descriptor(),
                             { u"/bin/cp"_s, u"-R"_s, u"-p"_s, source, target });
        stop = true;
    }
    std::error_code lost;
    for (const QString &path : std::as_const(marked)) {
        const auto failed =
            FileCopy::copyUserAttributes(path.isEmpty() ? source : PathText::joined(source, path),
                                         path.isEmpty() ? made : PathText::joined(made, path));
        if (end.succeeded() && failed)
            lost = failed;
    }
    const auto take = [&](int folder, const QByteArray &to) {
        return Rename::noReplace(_staging.descriptor(), entry, folder, to);
    };
    const auto copied = statxStatus(_staging.descriptor(), entry, Links::NoFollow);
    const auto copy = [&] { return TreeList::of(_staging.descriptor(), entry); };
    TransferEnd result;
    if (end.succeeded() && copied && (!moves || (!lost && list.isWholeIn(copy())))) {
        result = place(item, { *copied, take });
        const bool arrived = result.what == TransferEnd::Done;
        if (moves && arrived)
            _pending.addMoved(list);
        if (lost && arrived)
            tellLost(item, lost);
    } else {
        // What may not be read lacks; everything else is of use, where nothing is replaced by it.
        if (end.started && end.status == 1 && copied && !moves
            && item.status.kind == FileKind::Directory && item.standing == Standing::Refuse
            && list.isReadableWholeIn(copy(), _source.number()))
            result = place(item, { *copied, take });
        QString reason = end.errorText;
        reason.remove(u"/bin/cp: "_s);
        reason.replace(target, PathText::joined(_destinationPath, FileName::fromBytes(item.to)));
        if (end.succeeded())
            reason = localized("The copy is not whole; the item stays where it was.")
                + (lost ? u' ' + QString::fromStdString(lost.message()) : QString());
        _noSpace = reason.contains(QString::fromLocal8Bit(std::strerror(ENOSPC)));
        reason = FileName::shown(reason);
        if (result.what == TransferEnd::Done)
            reason += u'\n' + localized("Everything else of it was copied.");
        result = { TransferEnd::Failed, reason };
    }
    if (copied)
        removeTreeAt(_staging.descriptor(), entry, copied->identity, ClosedFolders::Open);
    return result;
}
