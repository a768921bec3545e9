#include "operations/FileOperations.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "operations/SetAside.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

FileOperations::FileOperations(MessageBus &bus, Alerts &alertsToAsk, Programs &programs,
                               Workspace &workspaceInUse, FileQueries &queries,
                               const DateText &dates, OpenDialogs &openDialogs)
    : alerts(alertsToAsk)
    , workspace(workspaceInUse)
    , _copyMove(alertsToAsk, programs, workspaceInUse, queries, dates)
    , _singleSteps(alertsToAsk, programs, workspaceInUse, _copyMove)
    , _refresh(bus)
    , _archives(alertsToAsk, programs, workspaceInUse, _copyMove.journal(), _workers)
    , _workers(openDialogs)
{
    bus.subscribe(CancelThread, this, &FileOperations::cancelThread);
    bus.subscribe(CancelArchiving, this, &FileOperations::cancelArchiving);
}

FileOperations::~FileOperations() = default;

void FileOperations::setMainModel(MainModel *model)
{
    _refresh.setMainModel(model);
    _workers.setExitHandler(
        [model](const OperationRecord &record) { model->threadWillExit(record); });
}

void FileOperations::setWindowController(PaneWindow *window, ProgressSheet *sheet)
{
    windowController = window;
    _refresh.setWindowController(window);
    _copyMove.setProgressSheet(sheet);
}

void FileOperations::cancelThread(const NoPayload &)
{
    _copyMove.cancelThread();
}

void FileOperations::cancelArchiving(const NoPayload &)
{
    _archives.cancelArchiving();
}

void FileOperations::stopAll()
{
    _copyMove.cancelAll();
    _archives.cancelAll();
}

void FileOperations::runCopyMove(const OperationRequest &request, Operation operation)
{
    const auto run = acceptRequest(request);
    if (!run) {
        windowController->setProgressIndicator(false);
        return;
    }
    _workers.detach(operation,
                    [this, run = *run, ticket = _copyMove.enqueue()](OperationRecord &record) {
                        if (run.updateBoth == UpdateBoth::DragDropFinder)
                            record.droppedOn = run.side;
                        _copyMove.performCopyMoveProgress(run, record.operation, ticket);
                    });
}

void FileOperations::copyItems(const OperationRequest &request)
{
    runCopyMove(request, Operation::Copy);
}

void FileOperations::moveItems(const OperationRequest &request)
{
    runCopyMove(request, Operation::Move);
}

void FileOperations::deleteItems(const OperationRequest &request)
{
    if (const auto run = acceptRequest(request))
        _workers.detach(Operation::Delete,
                        [this, run = *run](OperationRecord &) { _singleSteps.deleteItems(run); });
}

void FileOperations::newFolder(const OperationRequest &request)
{
    const QString name = request.value(RequestKey::Items).toStringList().value(0);
    const QString path = PathText::joined(request.value(RequestKey::Source).toString(), name);
    // "." and ".." exist in every folder; as names they are refused by the worker.
    if (PathText::isItemName(name) && exists(path)) {
        alerts.ask(Alert::error(localized("Folder already exists!")));
        return;
    }
    if (const auto run = acceptRequest(request))
        _workers.detach(Operation::NewFolder, [this, run = *run](OperationRecord &record) {
            _singleSteps.newFolder(run, record);
        });
}

void FileOperations::renameItem(const OperationRequest &request)
{
    if (const auto run = acceptRequest(request))
        _workers.detach(Operation::Rename, [this, run = *run](OperationRecord &record) {
            _singleSteps.renameItem(run, record);
        });
}

void FileOperations::createAlias(const OperationRequest &request)
{
    if (const auto run = acceptRequest(request))
        _workers.detach(Operation::Copy,
                        [this, run = *run](OperationRecord &) { _singleSteps.createAlias(run); });
}

void FileOperations::duplicateItem(const QString &source, const QString &destination)
{
    if (exists(destination)) {
        const QString name = FileName::shown(PathText::lastComponent(destination));
        if (alerts.ask(
                Alert::question(filled(localized("Target '%@' already exists! Overwrite?"), name)))
            != Alert::Yes)
            return;
    }
    windowController->setProgressIndicator(true);
    _workers.runAndWait([&] { _singleSteps.duplicateItem(source, destination); });
    windowController->setProgressIndicator(false);
    updateFileLists({ Operation::Duplicate });
}

void FileOperations::archiveItems(const QStringList &paths, const QString &destination,
                                  const QString &archiveName)
{
    _archives.archiveItems(paths, destination, archiveName);
}

void FileOperations::unpackArchive(const QString &archive, const QString &destination)
{
    _archives.unpackArchive(archive, destination);
}

void FileOperations::updateFileLists(const OperationRecord &record)
{
    _refresh.updateFileLists(record);
}

void FileOperations::settleInterruptedWork()
{
    SetAside::replay(_copyMove.journal(), workspace);
}
