#include "operations/CopyMove.h"

#include "base/MainThread.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "model/FileQueries.h"
#include "model/ProgressSheet.h"
#include "operations/CopyProgress.h"
#include "operations/SetAside.h"
#include "operations/SyncRemovable.h"
#include "platform/Alerts.h"
#include "platform/Programs.h"
#include "platform/Workspace.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MonitoredSize = 16 * 1024 * 1024; // bytes; smaller files are copied in no time
constexpr qint64 SheetDelay = 2000; // milliseconds

bool isFolder(const QString &path)
{
    const auto status = fileStatus(path, Links::NoFollow);
    return status && status->kind == FileKind::Directory;
}

} // namespace

// One run of the engine, from its turn to its end.
struct CopyMove::Run {
    const AcceptedRequest &request;
    Operation operation;
    QString first; // decides for every item whether the sheet comes up at once
    QElapsedTimer since {};
    int counter = 1;
    bool allOverride = false; // "All" was answered
    std::optional<bool> firstIsLong {};
    QSet<std::pair<quint64, quint64>> made {}; // by this run; never written over by it

    bool copies() const { return operation == Operation::Copy; }
    // On a folder that folds case "a" and "A" are one name: the second would eat the first.
    void remember(const QString &path)
    {
        if (const auto status = fileStatus(path, Links::NoFollow))
            made.insert({ status->identity.device, status->identity.inode });
    }
    bool madeHere(const QString &path) const
    {
        const auto status = fileStatus(path, Links::NoFollow);
        return status && made.contains({ status->identity.device, status->identity.inode });
    }
    QString source(const QString &name) const { return PathText::joined(request.source, name); }
    QString target(const QString &name) const
    {
        return PathText::joined(request.destination, name);
    }
    QString progressLine(const QString &name) const
    {
        return filled(copies() ? localized("Copying '%@'") : localized("Moving '%@'"),
                      FileName::shown(name));
    }
    QString failureLine(const QString &name) const
    {
        return filled(copies() ? localized("Copy progress of '%@' failed!")
                               : localized("Move progress of '%@' failed!"),
                      FileName::shown(name));
    }
    QString endLine() const
    {
        return copies() ? localized("Copy progress finished.")
                        : localized("Move progress finished.");
    }
};

CopyMove::CopyMove(Alerts &alertsToAsk, Programs &programsToRun, Workspace &workspaceInUse,
                   FileQueries &fileQueries, const DateText &dateText)
    : alerts(alertsToAsk)
    , programs(programsToRun)
    , workspace(workspaceInUse)
    , queries(fileQueries)
    , dates(dateText)
    , _journal(PathText::joined(Journal::stateFolder(), u"set-asides"_s))
{
}

void CopyMove::performCopyMoveProgress(const AcceptedRequest &request, Operation operation,
                                       RunQueue::Ticket ticket) // worker thread
{
    if (!_queue.wait(ticket))
        return;
    const QStringList &items = request.items;
    Run run { request, operation, PathText::joined(request.source, items.value(0)) };
    run.since.start();
    onMainThread([&] { sheet->setWorkingSheetMaxProgressValue(double(items.size())); });

    auto next = Next::GoOn;
    for (qsizetype index = 0; index < items.size() && next == Next::GoOn; ++index)
        next = performItem(run, index);

    if (next != Next::EndThread) {
        syncIfRemovable(request.destination);
        onMainThread([&] {
            sheet->setWorkingSheetProgressValue(double(items.size()));
            sheet->setWorkingSheetInfoText(run.endLine());
        });
    }
    onMainThread([&] { sheet->closeWorkingSheet(); });
    _queue.end(ticket);
}

CopyMove::Next CopyMove::performItem(Run &run, qsizetype &index) // worker thread
{
    const QStringList &items = run.request.items;
    QString name = items[index];
    const auto refuseParent = [&] {
        alerts.ask(Alert::error(localized("The previous folder ('..') cannot be worked on with! "
                                          "Operation will be aborted!")));
        return Next::EndRun;
    };
    if (name == u".."_s)
        return refuseParent();
    if (_queue.isCancelled())
        return Next::EndThread;

    bool copyOver = false;
    bool replace = run.allOverride;
    if (!isAdmissible(run, name)) {
        reportFailure(run, name);
        return Next::GoOn;
    }
    if (!replace && exists(run.target(name))) {
        const auto answer = alerts.ask(Alert::overwriteQuestion(
            filled(localized("Target '%@' already exists! Overwrite?"), FileName::shown(name)),
            overwriteDetails(run.source(name), run.target(name))));
        if (answer == Alert::All)
            run.allOverride = true;
        replace = answer == Alert::Yes || answer == Alert::All;
        copyOver = !replace; // agreed to nothing
        if (answer == Alert::No) {
            if (++index == items.size()) {
                onMainThread([&] {
                    if (!sheet->isWorkingSheetVisible())
                        sheet->cancelWorkingSheet();
                });
                return Next::EndThread;
            }
            // Kept: the item after a "No" is copied over unasked, and the counter stays behind.
            name = items[index];
            if (name == u".."_s)
                return refuseParent();
        }
    }
    const QString source = run.source(name);
    const QString target = run.target(name);
    if (copyOver && (!isAdmissible(run, name) || !clearForCopyOver(source, target))) {
        reportFailure(run, name);
        return Next::GoOn;
    }
    const bool showsSheet = run.copies() && isLong(run);
    onMainThread([&] {
        if (showsSheet && !sheet->isWorkingSheetVisible())
            sheet->showWorkingSheet();
        sheet->setWorkingSheetInfoText(run.progressLine(name));
        sheet->setWorkingSheetDetailText({});
        sheet->setWorkingSheetProgressValue(run.counter);
    });
    QString details;
    const bool done = replace && exists(target) ? replaceItem(run, source, target, details)
        : run.copies()                          ? copyFile(source, target)
                                                : moveFile(source, target);
    if (!done) {
        reportFailure(run, name, details);
        return Next::GoOn;
    }
    run.remember(target);
    ++run.counter;
    return Next::GoOn;
}

bool CopyMove::isLong(Run &run) const // worker thread
{
    if (!run.firstIsLong)
        run.firstIsLong =
            queries.isDirectory(run.first) || queries.isItemFolderOrOversized(run.first);
    return *run.firstIsLong || run.since.elapsed() > SheetDelay;
}

void CopyMove::reportFailure(const Run &run, const QString &name, const QString &details)
{
    Alert alert = Alert::error(run.failureLine(name));
    alert.details = details;
    alerts.ask(alert);
}

bool CopyMove::isAdmissible(const Run &run, const QString &name) const
{
    const QString target = run.target(name);
    return PathText::isItemName(name) && mayReplace(run.source(name), target, run.operation)
        && !run.madeHere(target);
}

bool CopyMove::mayReplace(const QString &source, const QString &target, Operation operation) const
{
    if (operation == Operation::Move && FileFlags::isLocked(source))
        return false;
    if (isFolder(source) && SameFile::isInside(PathText::parent(target), source))
        return false;
    if (!exists(target))
        return true;
    return !SameFile::isSame(source, target) && !FileFlags::isLocked(target)
        && !(isFolder(target) && SameFile::isInside(PathText::parent(source), target));
}

bool CopyMove::clearForCopyOver(const QString &source, const QString &target)
{
    if (!exists(source))
        return false;
    if (!isFolder(target))
        return !exists(target) || workspace.moveToTrash(target);
    // The command puts the item into an existing folder, under its own name.
    const QString inside = PathText::joined(target, PathText::lastComponent(source));
    return mayReplace(source, inside, Operation::Copy)
        && (!exists(inside) || workspace.moveToTrash(inside));
}

bool CopyMove::replaceItem(Run &run, const QString &source, const QString &target, QString &details)
{
    const auto work = !run.copies() ? SetAside::Work::Move
        : isFolder(source)          ? SetAside::Work::CopyFolder
                                    : SetAside::Work::CopyFile;
    auto old = SetAside::take(target, work, _journal);
    if (!old)
        return false;
    if (run.copies() ? copyFile(source, target) : moveFile(source, target)) {
        old->discard();
        return true;
    }
    switch (old->settleFailure(workspace)) {
    case Settled::CameBack:
        break;
    case Settled::WentToTrash:
        details = localized("The item that was to be replaced is in the Trash.");
        break;
    case Settled::KeptBeside:
        details =
            localized("The item that was to be replaced was kept beside it under another name.");
        break;
    }
    return false;
}

bool CopyMove::copyFile(const QString &source, const QString &destination)
{
    const auto status = fileStatus(source, Links::NoFollow);
    if (!status)
        return false;
    // Onto an existing folder the command copies into it.
    const QString made = isFolder(destination)
        ? PathText::joined(destination, PathText::lastComponent(source))
        : destination;
    const bool folder = status->kind == FileKind::Directory;
    std::optional<CopyProgress> monitor;
    if (folder || status->size >= MonitoredSize) {
        monitor.emplace(source, [this](const QString &line) {
            onMainThread([&] {
                if (sheet && sheet->isWorkingSheetVisible())
                    sheet->setWorkingSheetDetailText(line);
            });
        });
    }
    const ProgramEnd end =
        programs.run({ u"/bin/cp"_s, u"-R"_s, u"-p"_s, source, destination }, [&](pid_t process) {
            if (monitor)
                monitor->childStarted(process);
        });
    const QStringList withAttributes = monitor  ? monitor->finish()
        : FileSystem::hasUserAttributes(source) ? QStringList { u""_s }
                                                : QStringList {};
    if (!end.succeeded())
        return false;
    for (const QString &relative : withAttributes)
        FileSystem::copyUserAttributes(
            relative.isEmpty() ? source : PathText::joined(source, relative),
            relative.isEmpty() ? made : PathText::joined(made, relative));
    return true;
}

bool CopyMove::moveFile(const QString &source, const QString &destination)
{
    return programs.run({ u"/bin/mv"_s, u"-f"_s, source, destination }).succeeded();
}

QString CopyMove::overwriteDetails(const QString &source, const QString &target) const
{
    QString text;
    onMainThread([&] {
        const auto described = [&](const QString &path) {
            const auto status = fileStatus(path, Links::NoFollow);
            if (!status)
                return u"--"_s;
            const QString size = status->kind == FileKind::Directory
                ? localized("Folder")
                : SizeText::getCalcFileSize(status->size);
            return size + u", "_s
                + dates.getLocalizedShortDateAndTime(
                    QDateTime::fromMSecsSinceEpoch(status->modified / 1'000'000));
        };
        text = filled(localized("Existing item: %@"), described(target)) + u'\n'
            + filled(localized("New item: %@"), described(source));
    });
    return text;
}
