#include "operations/PendingRemovals.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/Staging.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"
#include "operations/KeptBeside.h"
#include "platform/Workspace.h"

#include <utility>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

constexpr size_t MostItems = 1000;
constexpr qint64 MostBytes = 256 * 1024 * 1024;
constexpr qint64 LongestWait = 20'000; // milliseconds

QString shown(const QByteArray &name)
{
    return FileName::shown(FileName::fromBytes(name));
}

} // namespace

PendingRemovals::PendingRemovals(int source, int destination, QString destinationPath,
                                 Staging &stagingInUse, Workspace &workspaceInUse)
    : _source(source)
    , _destination(destination)
    , _destinationPath(std::move(destinationPath))
    , staging(stagingInUse)
    , workspace(workspaceInUse)
{
}

bool PendingRemovals::Lot::isFull() const
{
    return replaced.size() + moved.size() >= MostItems || bytes >= MostBytes
        || (since.isValid() && since.hasExpired(LongestWait));
}

void PendingRemovals::Lot::count(qint64 more)
{
    if (!since.isValid())
        since.start();
    bytes += more;
}

void PendingRemovals::addReplaced(const QByteArray &entry, const QByteArray &name,
                                  const FileStatus &status)
{
    _next.count(status.size);
    _next.replaced.push_back({ entry, name, status.identity });
}

void PendingRemovals::addMoved(const TreeList &list)
{
    _next.count(list.bytes());
    _next.moved.push_back(list);
}

void PendingRemovals::settleDue()
{
    if (!_next.isFull())
        return;
    removeWritten();
    _leaving = std::exchange(_next, {});
    _writing = std::async(
        [destination = _destination] { return errorOf(SystemCalls::syncfs(destination)); });
}

void PendingRemovals::settle()
{
    removeWritten();
    if (const Lot last = std::exchange(_next, {}); !last.isEmpty())
        remove(last, errorOf(SystemCalls::syncfs(_destination)));
}

void PendingRemovals::removeWritten()
{
    if (const Lot lot = std::exchange(_leaving, {}); !lot.isEmpty())
        remove(lot, _writing.get());
}

void PendingRemovals::remove(const Lot &lot, const std::error_code &unwritten)
{
    if (!_unwritten)
        _unwritten = unwritten;
    for (const Replaced &item : lot.replaced)
        removeReplaced(item);
    for (const TreeList &list : lot.moved) {
        if (_unwritten) {
            _told += filled(localized("'%@' stays at the source, its copy may not be whole: %@"),
                            shown(list.entries().front().name),
                            QString::fromStdString(_unwritten.message()));
            continue;
        }
        const QStringList left = list.removeFrom(_source);
        for (const QString &path : left)
            _told += filled(localized("'%@' stays at the source: it is new, was changed, or "
                                      "cannot be removed."),
                            FileName::shown(path));
    }
}

void PendingRemovals::removeReplaced(const Replaced &item)
{
    const auto failed = _unwritten
        ? _unwritten
        : removeTreeAt(staging.descriptor(), item.entry, item.identity).failed;
    if (failed
        && (statxStatus(staging.descriptor(), item.entry, Links::NoFollow) || errno != ENOENT))
        save(item.entry, item.name, failed);
}

bool PendingRemovals::trash(const QByteArray &entry, const QByteArray &name)
{
    return staging.handOut(entry, name, [&](const QString &path) {
        return workspace.moveToTrash(path, nullptr,
                                     PathText::joined(_destinationPath, FileName::fromBytes(name)));
    });
}

void PendingRemovals::save(const QByteArray &entry, const QByteArray &name,
                           const std::error_code &reason)
{
    const QString why = QString::fromStdString(reason.message());
    QString place;
    if (trash(entry, name))
        place = localized("What is left of it is in the Trash.");
    else if (const auto beside = keepBeside(staging.descriptor(), entry, _destination, name))
        place = filled(localized("What is left of it stands beside it as '%@'."), shown(*beside));
    else
        place =
            filled(localized("What is left of it is in '%@'."), FileName::shown(staging.path()));
    _told += filled(localized("The replaced item '%@' could not be removed: %@"), shown(name), why)
        + u' ' + place;
}
