#include "operations/Archives.h"

#include "base/MainThread.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/ArchiveProgressSheet.h"
#include "operations/ArchiveTask.h"
#include "operations/Packing.h"
#include "operations/SmallPrint.h"
#include "operations/SyncRemovable.h"
#include "operations/Workers.h"
#include "platform/Alerts.h"
#include "platform/Programs.h"

#include <csignal>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int CancelledStatus = 15; // an exit status

} // namespace

Archives::Archives(Alerts &alertsToAsk, Programs &programsToRun, Workspace &workspaceInUse,
                   const Journal &journalToWrite, Workers &threads)
    : alerts(alertsToAsk)
    , programs(programsToRun)
    , workspace(workspaceInUse)
    , journal(journalToWrite)
    , workers(threads)
{
}

Archives::~Archives() = default;

int Archives::showSheet(const QString &title)
{
    sheet->showArchiveSheet(title);
    return ++_sheetNumber;
}

void Archives::closeSheet(int number) // worker thread
{
    onMainThread([&] {
        if (number == _sheetNumber)
            sheet->closeArchiveSheet();
    });
}

std::shared_ptr<ArchiveTask> Archives::newTask()
{
    task = std::make_shared<ArchiveTask>();
    _tasks.removeIf([](const std::weak_ptr<ArchiveTask> &old) { return old.expired(); });
    _tasks.append(task);
    return task;
}

void Archives::archiveItems(const QStringList &paths, const QString &destination,
                            const QString &archiveName, const std::optional<FileStatus> &replaced)
{
    if (paths.isEmpty())
        return;
    const int number =
        showSheet(filled(localized("Archiving to %@..."), FileName::shown(archiveName)));
    PackingJob job {
        PathText::parent(paths.first()), {}, destination, archiveFileName(archiveName), replaced
    };
    for (const QString &path : paths)
        job.names.append(PathText::lastComponent(path));
    workers.detach(
        Operation::Archive, { job.folder, destination },
        [this, job, number, running = newTask()](OperationRecord &record) { // worker thread
            record.item = job.destination;
            Packing packing(job, alerts, programs, workspace, journal, *running);
            packing.run();
            record.done = packing.done();
            closeSheet(number);
        });
}

void Archives::unpackArchive(const QString &archive, const QString &destination)
{
    QStringList arguments { u"/usr/bin/ditto"_s, u"-x"_s };
    if (PathText::extension(archive) == u"zip")
        arguments.append(u"-k"_s);
    arguments << archive << destination;
    const int number = showSheet(
        filled(localized("Unpacking '%@'..."), FileName::shown(PathText::lastComponent(archive))));
    workers.detach(Operation::Archive, { PathText::parent(archive), destination },
                   [this, arguments, number, running = newTask()](OperationRecord &record) mutable {
                       record.item = arguments.last();
                       record.isFinal = true;
                       const ProgramEnd end = programs.run(
                           arguments, [&](pid_t process) { running->started(process); });
                       const auto unwritten = syncIfRemovable(record.item);
                       closeSheet(number);
                       taskDidTerminate(end);
                       if (unwritten)
                           alerts.ask(*unwritten);
                   });
}

void Archives::taskDidTerminate(const ProgramEnd &end) // worker thread
{
    // Cancelled by the program's own answer, or before it could give one.
    const bool cancelled =
        end.started && (end.status == CancelledStatus || end.status == 128 + SIGTERM);
    if (end.succeeded() || cancelled)
        return;
    // A line for each member that it complains of.
    alerts.ask(remark(localized("Unpacking failed!"), shownLines(end.errorText)));
}

void Archives::cancelArchiving()
{
    if (task)
        task->terminate();
}

void Archives::cancelAll()
{
    for (const std::weak_ptr<ArchiveTask> &each : std::as_const(_tasks))
        if (const auto running = each.lock())
            running->terminate();
}
