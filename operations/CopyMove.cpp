#include "operations/CopyMove.h"

#include "base/MainThread.h"
#include "model/FileQueries.h"
#include "model/ProgressSheet.h"
#include "operations/CopyRun.h"
#include "operations/Refusal.h"
#include "operations/SmallPrint.h"
#include "operations/SyncRemovable.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 SheetDelay = 2000; // milliseconds
constexpr qint64 TextPause = 100; // milliseconds between two texts that nobody sees

QString reasonText(const std::error_code &failure)
{
    return QString::fromStdString(failure.message());
}

// What stands at the target goes to the Trash, if that is allowed.
TransferEnd putOver(Transfer &transfer, Operation operation, const QString &source,
                    const QString &target)
{
    const QString name = PathText::lastComponent(source);
    const QString as = PathText::lastComponent(target);
    const auto standing = transfer.atDestination(as);
    if (standing.failure)
        return { TransferEnd::Failed, reasonText(standing.failure) };
    const QString refused =
        refusalOf(source, transfer.atSource(name).status, target, standing.status, operation);
    if (!refused.isNull())
        return { TransferEnd::Failed, refused };
    TransferEnd end =
        transfer.putAs(name, as, standing.status ? Standing::ToTrash : Standing::Refuse);
    if (end.what == TransferEnd::NotAsShown) // it came this moment
        return { TransferEnd::Failed, reasonText(std::make_error_code(std::errc::file_exists)) };
    return end;
}

} // namespace

CopyMove::CopyMove(Alerts &alertsToAsk, Programs &programsToRun, Workspace &workspaceInUse,
                   FileQueries &fileQueries, const DateText &dateText)
    : alerts(alertsToAsk)
    , programs(programsToRun)
    , workspace(workspaceInUse)
    , queries(fileQueries)
    , dates(dateText)
    , _journal(Journal::runsFolder())
{
}

DoneItems CopyMove::performCopyMoveProgress(const AcceptedRequest &request, Operation operation,
                                            RunQueue::Ticket ticket) // worker thread
{
    if (!_queue.wait(ticket))
        return {};
    const QStringList &items = request.items;
    Transfer transfer(operation, request.source, request.destination, programs, workspace, _journal,
                      [this](const QString &line) { showLine(line); });
    Run run { request, operation, PathText::joined(request.source, items.value(0)), transfer };
    run.since.start();
    onMainThread([&] { sheet->setWorkingSheetMaxProgressValue(double(items.size())); });

    auto next = Next::GoOn;
    for (qsizetype index = 0; index < items.size() && next == Next::GoOn; ++index)
        next = performItem(run, index);

    run.staying += transfer.finish();
    if (const auto unwritten = syncIfRemovable(request.destination))
        alerts.ask(*unwritten);
    if (next != Next::EndThread) {
        onMainThread([&] {
            sheet->setWorkingSheetProgressValue(double(items.size()));
            sheet->setWorkingSheetInfoText(run.endLine());
        });
    }
    onMainThread([&] { sheet->closeWorkingSheet(); });
    reportStaying(run.staying);
    _queue.end(ticket);
    run.done.add(transfer.done());
    return run.done;
}

CopyMove::Next CopyMove::performItem(Run &run, qsizetype &index) // worker thread
{
    const QStringList &items = run.request.items;
    bool mayAsk = true;
    for (;;) {
        const QString name = items[index];
        if (name == u".."_s) {
            alerts.ask(
                Alert::error(localized("The previous folder ('..') cannot be worked on with! "
                                       "Operation will be aborted!")));
            return Next::EndRun;
        }
        if (mayAsk && _queue.isCancelled())
            return Next::EndThread;
        if (run.operation == Operation::Move && !run.transfer.crossesDevices()
            && movesToFree(run, name)) {
            tell(run, name);
            ++run.counter;
            return Next::GoOn;
        }
        const Decision decision = decide(run, name, mayAsk, index + 1 == items.size());
        if (decision.leaves == Next::EndThread)
            return Next::EndThread;
        if (decision.leaves) {
            // Kept: the item after a "No" is copied over unasked, and the counter stays behind.
            ++index;
            mayAsk = false;
            continue;
        }
        if (!decision.standing) {
            alerts.ask(Alert::failure(run.failureLine(name), decision.reason));
            return Next::GoOn;
        }
        tell(run, name);
        const auto standing = decision.standing == Standing::ToTrash
            ? run.transfer.atDestination(name).status
            : std::nullopt;
        const TransferEnd end = isFolder(standing)
            ? putInto(run, name, standing->identity)
            : run.transfer.put(name, *decision.standing, decision.shown);
        if (end.what == TransferEnd::NotAsShown)
            continue; // nobody agreed to lose what stands there now
        if (end.what == TransferEnd::Done)
            ++run.counter;
        else
            alerts.ask(Alert::failure(run.failureLine(name), end.reason));
        return Next::GoOn;
    }
}

CopyMove::Decision CopyMove::decide(Run &run, const QString &name, bool mayAsk,
                                    bool isLast) // worker thread
{
    Decision decision;
    const auto standing = run.transfer.atDestination(name);
    decision.reason = !PathText::isItemName(name) ? FileName::shown(name)
        : standing.failure                        ? reasonText(standing.failure)
        : standing.status && run.transfer.madeHere(name, *standing.status)
        ? localized("The existing item was made by the same run.")
        : refusalOf(run.source(name), run.transfer.atSource(name).status, run.target(name),
                    standing.status, run.operation);
    if (!decision.reason.isNull())
        return decision;
    decision.standing = Standing::Refuse;
    if (!standing.status)
        return decision;
    decision.standing = mayAsk ? Standing::Replace : Standing::ToTrash;
    if (run.allOverride || !mayAsk)
        return decision;
    const auto answer = alerts.ask(Alert::overwriteQuestion(
        filled(localized("Target '%@' already exists! Overwrite?"), FileName::shown(name)),
        overwriteDetails(run, name, *standing.status, isLast)));
    if (answer == Alert::All)
        run.allOverride = true;
    if (answer == Alert::Yes || answer == Alert::All) {
        decision.shown = standing.status;
        return decision;
    }
    if (answer != Alert::No) {
        decision.standing = Standing::ToTrash; // agreed to nothing
        return decision;
    }
    decision.leaves = Next::GoOn;
    if (isLast) {
        decision.leaves = Next::EndThread;
        onMainThread([&] {
            if (!sheet->isWorkingSheetVisible())
                sheet->cancelWorkingSheet();
        });
    }
    return decision;
}

bool CopyMove::movesToFree(Run &run, const QString &name) // worker thread
{
    if (!PathText::isItemName(name))
        return false;
    const auto given = run.transfer.atSource(name).status;
    return given && refusalOf(run.source(name), given, run.target(name), {}, run.operation).isNull()
        && run.transfer.moveToFree(name, *given);
}

TransferEnd CopyMove::putInto(Run &run, const QString &name,
                              const FileIdentity &folder) // worker thread
{
    const QString target = run.target(name);
    Transfer inner(
        run.operation, run.request.source, target, programs, workspace, _journal,
        [this](const QString &line) { showLine(line); }, folder);
    TransferEnd end =
        putOver(inner, run.operation, run.source(name), PathText::joined(target, name));
    run.staying += inner.finish();
    run.done.add(inner.done());
    return end;
}

std::optional<QString> CopyMove::duplicate(const QString &source, const QString &destination,
                                           DoneItems &done)
{
    const QString as = PathText::lastComponent(destination);
    if (!PathText::isItemName(as))
        return FileName::shown(as);
    const auto existing = fileStatus(destination, Links::NoFollow);
    // Kept: an existing folder is copied into, not replaced.
    const bool into = isFolder(existing)
        && refusalOf(source, fileStatus(source, Links::NoFollow), destination, existing,
                     Operation::Copy)
               .isNull();
    const QString target =
        into ? PathText::joined(destination, PathText::lastComponent(source)) : destination;
    Transfer transfer(Operation::Copy, PathText::parent(source), PathText::parent(target), programs,
                      workspace, _journal, {},
                      into ? std::optional(existing->identity) : std::nullopt);
    const TransferEnd end = putOver(transfer, Operation::Copy, source, target);
    reportStaying(transfer.finish());
    done.add(transfer.done());
    if (const auto unwritten = syncIfRemovable(PathText::parent(target)))
        alerts.ask(*unwritten);
    return end.what == TransferEnd::Done ? std::nullopt : std::optional(end.reason);
}

void CopyMove::tell(Run &run, const QString &name) // worker thread
{
    const bool showsSheet = run.copies() && isLong(run);
    // Nobody sees the texts of a hidden sheet: not each is worth waiting for the window.
    if (!showsSheet && run.sinceTold.isValid() && !run.sinceTold.hasExpired(TextPause))
        return;
    run.sinceTold.start();
    onMainThread([&] {
        if (showsSheet && !sheet->isWorkingSheetVisible())
            sheet->showWorkingSheet();
        sheet->setWorkingSheetInfoText(run.progressLine(name));
        sheet->setWorkingSheetDetailText({});
        if (display)
            display->showRunDetail({});
        sheet->setWorkingSheetProgressValue(run.counter);
    });
}

bool CopyMove::isLong(Run &run) const // worker thread
{
    if (!run.firstIsLong) {
        // What a link leads to is not copied, and may be on a server that never answers.
        const auto first = fileStatus(run.first, Links::NoFollow);
        run.firstIsLong = first && first->kind != FileKind::Symlink
            && (queries.isDirectory(run.first) || queries.isItemFolderOrOversized(run.first));
    }
    return *run.firstIsLong || run.since.elapsed() > SheetDelay;
}

void CopyMove::showLine(const QString &line) const // any thread
{
    onMainThread([&] {
        if (sheet && sheet->isWorkingSheetVisible())
            sheet->setWorkingSheetDetailText(line);
        if (display)
            display->showRunDetail(line);
    });
}

void CopyMove::reportStaying(const QStringList &lines)
{
    if (!lines.isEmpty())
        alerts.ask(remark(localized("Something was left behind."), lines));
}

QString CopyMove::overwriteDetails(const Run &run, const QString &name, const FileStatus &standing,
                                   bool isLast) const
{
    QString text;
    const auto given = run.transfer.atSource(name).status;
    onMainThread([&] {
        const auto described = [&](const FileStatus &status) {
            const QString size = status.kind == FileKind::Directory
                ? localized("Folder")
                : SizeText::getCalcFileSize(status.size);
            return size + u", "_s
                + dates.getLocalizedShortDateAndTime(
                    QDateTime::fromMSecsSinceEpoch(status.modified / 1'000'000));
        };
        text = filled(localized("Existing item: %@"), described(standing)) + u'\n'
            + filled(localized("New item: %@"), given ? described(*given) : u"--"_s);
        if (!isLast)
            text += u'\n'
                + localized("After \"No\" the next item is taken without a question; what it "
                            "replaces goes to the Trash.");
    });
    return text;
}
