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

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

constexpr size_t MostItems = 5000;
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

void PendingRemovals::count(qint64 bytes)
{
    if (!_since.isValid())
        _since.start();
    _bytes += bytes;
}

void PendingRemovals::addReplaced(const QByteArray &entry, const QByteArray &name,
                                  const FileStatus &status)
{
    count(status.size);
    _replaced.push_back({ entry, name, status.identity });
}

void PendingRemovals::addMoved(const TreeList &list)
{
    count(list.bytes());
    _moved.push_back(list);
}

bool PendingRemovals::isDue() const
{
    return _replaced.size() + _moved.size() >= MostItems || _bytes >= MostBytes
        || (_since.isValid() && _since.hasExpired(LongestWait));
}

void PendingRemovals::settle()
{
    if (isEmpty())
        return;
    const auto unwritten = errorOf(SystemCalls::syncfs(_destination));
    for (const Replaced &item : _replaced)
        settleReplaced(item, unwritten);
    for (const TreeList &list : _moved) {
        if (unwritten) {
            _told += filled(localized("'%@' stays at the source, its copy may not be whole: %@"),
                            shown(list.entries().front().name),
                            QString::fromStdString(unwritten.message()));
            continue;
        }
        const QStringList left = list.removeFrom(_source);
        for (const QString &path : left)
            _told += filled(localized("'%@' stays at the source: it is new, was changed, or "
                                      "cannot be removed."),
                            FileName::shown(path));
    }
    _replaced.clear();
    _moved.clear();
    _bytes = 0;
    _since.invalidate();
}

void PendingRemovals::settleReplaced(const Replaced &item, const std::error_code &unwritten)
{
    const auto failed =
        unwritten ? unwritten : removeTreeAt(staging.descriptor(), item.entry, item.identity);
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
