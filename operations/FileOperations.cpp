#include "operations/FileOperations.h"

#include "base/Arrivals.h"
#include "base/MainThread.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/FileQueries.h"
#include "model/PaneWindow.h"
#include "operations/InterruptedRuns.h"
#include "operations/RequestValidation.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString describedRun(const OperationRequest &request, Operation operation)
{
    const bool copies = operation == Operation::Copy;
    const QString folder = FileName::shown(PathText::lastComponent(request.destination));
    if (request.items.size() == 1)
        return filled(copies ? localized("Copying %@ to %@") : localized("Moving %@ to %@"),
                      FileName::shown(request.items.first()), folder);
    return filled(
        filled(copies ? localized("Copying %i items to %@") : localized("Moving %i items to %@"),
               int(request.items.size())),
        folder);
}

// False when the person, or the silence of a mount, ended the wait.
bool isAnswering(const QStringList &folders, Waiting &waiting)
{
    return std::ranges::all_of(folders, [&](const QString &folder) {
        return waiting.forAnswer(folder, [folder] { return exists(folder); }).has_value();
    });
}

} // namespace

FileOperations::FileOperations(MessageBus &bus, Alerts &alertsToAsk, Programs &programs,
                               Workspace &workspaceInUse, FileQueries &fileQueries,
                               const DateText &dates, OpenDialogs &openDialogs)
    : alerts(alertsToAsk)
    , workspace(workspaceInUse)
    , queries(fileQueries)
    , _copyMove(alertsToAsk, programs, workspaceInUse, fileQueries, dates)
    , _singleSteps(alertsToAsk, programs, workspaceInUse, _copyMove)
    , _permanentRemoval(alertsToAsk, workspaceInUse, _copyMove.journal())
    , _archives(alertsToAsk, programs, workspaceInUse, _copyMove.journal(), _workers)
    , _undo(alertsToAsk, programs, workspaceInUse, _copyMove, _workers)
    , _workers(openDialogs)
{
    _workers.setHandlers({ [this](Operation operation) { threadBegins(operation); },
                           [this](const OperationRecord &record) { threadWillExit(record); } });
    bus.subscribe(CancelThread, this, &FileOperations::cancelThread);
    bus.subscribe(CancelArchiving, this, &FileOperations::cancelArchiving);
}

FileOperations::~FileOperations() = default;

void FileOperations::setMainModel(MainModel *model)
{
    _refresh.setMainModel(model);
    _undo.setMainModel(model);
}

void FileOperations::setWindowController(PaneWindow *window, ProgressSheet *sheet)
{
    windowController = window;
    _refresh.setWindowController(window);
    _undo.setWindowController(window);
    _copyMove.setProgressSheet(sheet);
}

void FileOperations::setRunDisplay(RunDisplay *display)
{
    _copyMove.setRunDisplay(display);
    _undo.setRunDisplay(display);
    _copyMove.queue().setChangeHandler([this, display] { // any thread
        onMainThread([&] { display->showRuns(_copyMove.queue().runs()); });
    });
}

void FileOperations::cancelThread(const NoPayload &)
{
    _copyMove.queue().cancel();
}

void FileOperations::cancelArchiving(const NoPayload &)
{
    _archives.cancelArchiving();
}

QString FileOperations::describedRuns()
{
    QStringList lines;
    const auto runs = _copyMove.queue().runs();
    for (const ShownRun &run : runs)
        lines.append(run.text);
    return shortened(lines);
}

void FileOperations::stopAll()
{
    _endsNow = true;
    _copyMove.queue().cancelAll();
    _archives.cancelAll();
}

bool FileOperations::isWorkAnswered(Waiting &waiting) const
{
    return isAnswering(_workers.places(), waiting);
}

bool FileOperations::spins(Operation operation)
{
    return operation == Operation::Copy || operation == Operation::Move
        || operation == Operation::Duplicate || operation == Operation::Undo;
}

void FileOperations::threadBegins(Operation operation)
{
    if (spins(operation))
        windowController->setProgressIndicator(true);
}

void FileOperations::threadWillExit(const OperationRecord &record)
{
    if (spins(record.operation))
        windowController->setProgressIndicator(false);
    if (record.isFinal)
        _undo.history().clear();
    _undo.history().add(record.done);
    endCut(record.cut, !record.done.items().isEmpty());
    _refresh.updateFileLists(record);
    if (record.refused)
        askAgain(record.operation, *record.refused);
}

void FileOperations::endCut(unsigned cut, bool anyMoved) const
{
    if (cut && cutEnded)
        cutEnded(cut, anyMoved);
}

void FileOperations::askAgain(Operation operation, const OperationRequest &refused)
{
    // Later: the worker ends first, and with it what waits for it. Not while the program ends.
    QMetaObject::invokeMethod(
        &_workers,
        [this, operation, refused] {
            Arrivals::deliver(&_workers, [this, operation, refused] {
                if (nameRefused && !_endsNow)
                    nameRefused(operation, refused);
            });
        },
        Qt::QueuedConnection);
}

void FileOperations::startCopyMove(const OperationRequest &request, Operation operation)
{
    if (!isPerformFileOperationDictionaryValid(request))
        return endCut(request.cut, false);
    _workers.detach(
        operation, { request.source, request.destination },
        [this, request, ticket = _copyMove.queue().enqueue(describedRun(request, operation))](
            OperationRecord &record) { // worker thread
            if (request.updateBoth.value() == UpdateBoth::DragDropFinder)
                record.droppedOn = request.side.value();
            record.cut = request.cut;
            record.done = _copyMove.performCopyMoveProgress(request, record.operation, ticket);
        });
}

void FileOperations::copyItems(const OperationRequest &request)
{
    startCopyMove(request, Operation::Copy);
}

void FileOperations::moveItems(const OperationRequest &request)
{
    startCopyMove(request, Operation::Move);
}

void FileOperations::deleteItems(const OperationRequest &request)
{
    if (isPerformFileOperationDictionaryValid(request))
        _workers.detach(Operation::Delete, { request.source },
                        [this, request](OperationRecord &record) {
                            record.done = _singleSteps.deleteItems(request);
                        });
}

void FileOperations::deletePermanently(const OperationRequest &request,
                                       const QList<FileIdentity> &seen)
{
    if (!isPerformFileOperationDictionaryValid(request))
        return;
    const QString text = request.items.size() == 1
        ? filled(localized("Deleting '%@' for good"), FileName::shown(request.items.first()))
        : filled(localized("Deleting %i items for good"), int(request.items.size()));
    // In its turn, so that it is shown and can be cancelled as a copy is.
    _workers.detach(
        Operation::Delete, { request.source },
        [this, request, seen,
         ticket = _copyMove.queue().enqueue(text)](OperationRecord &record) { // worker thread
            RunQueue &queue = _copyMove.queue();
            if (!queue.wait(ticket))
                return;
            record.isFinal = true;
            _permanentRemoval.removeItems(request, seen, [&] { return queue.isCancelled(); });
            queue.end(ticket);
        });
}

void FileOperations::newFolder(const OperationRequest &request)
{
    _endsNow = false;
    const QString name = request.items.value(0);
    // "." and ".." exist in every folder; as names they are refused by the worker.
    if (PathText::isItemName(name)) {
        const QString path = PathText::joined(request.source, name);
        const auto item = queries.itemAt(path);
        if (!item)
            return; // given up
        if (item->status) {
            alerts.ask(Alert::failure(localized("Folder already exists!"), FileName::shown(path)));
            askAgain(Operation::NewFolder, request);
            return;
        }
    }
    if (isPerformFileOperationDictionaryValid(request))
        _workers.detach(
            Operation::NewFolder, { request.source },
            [this, request](OperationRecord &record) { _singleSteps.newFolder(request, record); });
}

void FileOperations::newFile(const OperationRequest &request)
{
    _endsNow = false;
    if (isPerformFileOperationDictionaryValid(request))
        _workers.detach(
            Operation::NewFile, { request.source },
            [this, request](OperationRecord &record) { _singleSteps.newFile(request, record); });
}

void FileOperations::renameItem(const OperationRequest &request)
{
    _endsNow = false;
    if (isPerformFileOperationDictionaryValid(request))
        _workers.detach(
            Operation::Rename, { PathText::parent(request.source) },
            [this, request](OperationRecord &record) { _singleSteps.renameItem(request, record); });
}

void FileOperations::createAlias(const OperationRequest &request)
{
    if (isPerformFileOperationDictionaryValid(request))
        _workers.detach(Operation::Copy, { request.source, request.destination },
                        [this, request](OperationRecord &record) {
                            record.done = _singleSteps.createAlias(request);
                        });
}

void FileOperations::duplicateItem(const QString &source, const QString &destination)
{
    const auto replaced = queries.itemAt(destination);
    if (!replaced)
        return; // given up
    if (replaced->status) {
        const QString name = FileName::shown(PathText::lastComponent(destination));
        if (alerts.ask(
                Alert::question(filled(localized("Target '%@' already exists! Overwrite?"), name)))
            != Alert::Yes)
            return;
    }
    _workers.detach(Operation::Duplicate, { PathText::parent(source) },
                    [this, source, destination](OperationRecord &record) {
                        record.item = PathText::parent(destination);
                        record.done = _singleSteps.duplicateItem(source, destination);
                    });
}

void FileOperations::duplicateItems(const OperationRequest &request)
{
    if (!isPerformFileOperationDictionaryValid(request))
        return;
    OperationRequest shown = request;
    shown.destination = request.source;
    _workers.detach(
        Operation::Duplicate, { request.source },
        [this, request, ticket = _copyMove.queue().enqueue(describedRun(shown, Operation::Copy))](
            OperationRecord &record) { // worker thread
            record.item = request.source;
            record.done = _singleSteps.duplicateItems(request, ticket);
        });
}

void FileOperations::archiveItems(const QStringList &paths, const QString &destination,
                                  const QString &archiveName,
                                  const std::optional<FileStatus> &replaced)
{
    _archives.archiveItems(paths, destination, archiveName, replaced);
}

void FileOperations::unpackArchive(const QString &archive, const QString &destination)
{
    _archives.unpackArchive(archive, destination);
}

void FileOperations::settleInterruptedWork(Waiting &waiting)
{
    const auto notes = waiting.forAnswer(
        Journal::stateFolder(), [journal = _copyMove.journal()] { return journal.abandoned(); });
    if (!notes)
        return;
    for (const auto &note : *notes) {
        // One after the other, and nothing is begun on a server that is gone.
        const QStringList folders = foldersOfRun(*note);
        if (isAnswering(folders, waiting))
            // By pointer: all of it outlives every question.
            waiting.forAnswer(folders.value(0), [this, note] {
                settle(*note);
                return true;
            });
    }
}

void FileOperations::settle(Journal::Note &note) // worker thread
{
    settleInterruptedRun(note, workspace, [this](const QString &line) {
        const std::lock_guard lock(_settledLock);
        _settled.append(line);
    });
    // Who gave up to wait for it hears of it later.
    QMetaObject::invokeMethod(
        &_workers,
        [this] {
            Arrivals::deliver(&_workers, [this] {
                if (_hasToldSettled)
                    tellInterruptedWork();
            });
        },
        Qt::QueuedConnection);
}

void FileOperations::tellInterruptedWork()
{
    _hasToldSettled = true;
    QStringList lines;
    {
        const std::lock_guard lock(_settledLock);
        lines = std::exchange(_settled, {});
    }
    if (!lines.isEmpty())
        alerts.ask(remark(localized("Interrupted work was settled."), lines));
}
