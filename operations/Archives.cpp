#include "operations/Archives.h"

#include "base/MainThread.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "model/ArchiveProgressSheet.h"
#include "operations/SetAside.h"
#include "operations/SyncRemovable.h"
#include "operations/Workers.h"
#include "platform/Alerts.h"
#include "platform/ChildProcess.h"
#include "platform/Programs.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <csignal>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// zip's own answer when it cannot write the archive.
constexpr int CannotWrite = 15 << 8; // a wait status
constexpr int CancelledStatus = 15; // an exit status
// The kernel's limits: one argument, and with room to spare all of them together.
constexpr qsizetype LongestArgument = 128 * 1024 - 1; // bytes
constexpr qsizetype LongestArguments = 1024 * 1024; // bytes
constexpr qsizetype ReasonLines = 6;

// Whether a name means only itself to the shell, in double quotes, and to zip.
bool isPlain(const QString &name)
{
    return !name.startsWith(u'-') && name != u"@"
        && std::none_of(name.begin(), name.end(),
                        [](QChar letter) { return u"\"$`\\\n"_s.contains(letter); });
}

Alert failure(const QString &text, const QString &details = {})
{
    Alert alert = Alert::error(text);
    alert.style = Alert::Style::Informational;
    alert.details = details;
    return alert;
}

// What the program wrote to its standard error, a line for each member it complains of.
QString reasons(const QString &errorText)
{
    QStringList lines = errorText.split(u'\n', Qt::SkipEmptyParts).mid(0, ReasonLines);
    for (QString &line : lines)
        line = FileName::shown(line);
    return lines.join(u'\n');
}

} // namespace

QString archiveFileName(const QString &archiveName)
{
    return PathText::extension(archiveName) == u"zip" ? archiveName : archiveName + u".zip"_s;
}

struct Archives::Packing {
    QString folder; // of the items
    QStringList names;
    QString archiveName;
    QString destination;

    QString archive() const { return PathText::joined(destination, archiveName); }
    // Whether what lies in the destination is packed too.
    bool holdsDestination() const
    {
        return std::any_of(names.begin(), names.end(), [&](const QString &name) {
            const QString item = PathText::joined(folder, name);
            const auto status = fileStatus(item, Links::NoFollow);
            return status && status->kind == FileKind::Directory
                && SameFile::isInside(destination, item);
        });
    }
};

// One unpacking child process. Cancelled by the main thread, started by the worker.
class Archives::Task {
public:
    void started(pid_t process)
    {
        const std::lock_guard lock(_mutex);
        _child = std::make_unique<ChildProcess>(process);
        if (_cancelled)
            _child->terminate();
    }
    void terminate()
    {
        const std::lock_guard lock(_mutex);
        _cancelled = true;
        if (_child)
            _child->terminate();
    }

private:
    std::mutex _mutex;
    std::unique_ptr<ChildProcess> _child;
    bool _cancelled = false;
};

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

void Archives::archiveItems(const QStringList &paths, const QString &destination,
                            const QString &archiveName)
{
    if (paths.isEmpty())
        return;
    const int number =
        showSheet(filled(localized("Archiving to %@..."), FileName::shown(archiveName)));
    Packing packing {
        PathText::parent(paths.first()), {}, archiveFileName(archiveName), destination
    };
    for (const QString &path : paths)
        packing.names.append(PathText::lastComponent(path));
    workers.detach(Operation::Archive,
                   [this, packing, number](OperationRecord &record) { // worker thread
                       record.item = packing.destination;
                       _archiveItems(packing);
                       closeSheet(number);
                   });
}

void Archives::_archiveItems(const Packing &packing) // worker thread
{
    if (const int result = pack(packing))
        alerts.ask(failure(filled(localized("Archiving failed! Result code: %i"), result)));
    else
        syncIfRemovable(packing.destination);
}

int Archives::pack(const Packing &packing) // worker thread
{
    if (!PathText::isItemName(packing.archiveName))
        return CannotWrite;
    const QString archive = packing.archive();
    const auto old = fileStatus(archive, Links::NoFollow);
    if (!old)
        return runZip(packing);
    if (old->kind == FileKind::Directory || FileFlags::isLocked(archive))
        return CannotWrite;
    // Beside its old place it would be packed into its own successor.
    if (packing.holdsDestination())
        return workspace.moveToTrash(archive) ? runZip(packing) : CannotWrite;

    auto aside = SetAside::take(archive, SetAside::Work::CopyFile, journal);
    if (!aside)
        return CannotWrite;
    const int result = runZip(packing);
    if (result == 0)
        aside->discard();
    else
        aside->settleFailure(workspace);
    return result;
}

QString Archives::commandLine(const QString &folder, const QString &archive,
                              const QStringList &names)
{
    QString line = u"cd \""_s + folder + u"\" && /usr/bin/zip -r \""_s + archive + u"\" "_s;
    for (const QString &name : names)
        line += u'"' + name + u"\" "_s;
    return line;
}

int Archives::runZip(const Packing &packing) // worker thread
{
    const QString archive = packing.archive();
    const QString line = commandLine(packing.folder, archive, packing.names);
    if (isPlain(packing.folder) && isPlain(archive)
        && std::all_of(packing.names.begin(), packing.names.end(), isPlain)
        && FileName::toBytes(line).size() < LongestArgument)
        return programs.runShell(line);

    // Without a shell, which would run what a name holds; and zip is told that no name is an
    // option. More names than one run takes are added by the next.
    int result = 0;
    for (qsizetype next = 0; next < packing.names.size() && result == 0;) {
        QStringList arguments { u"/usr/bin/zip"_s, u"-r"_s, archive, u"--"_s };
        for (qsizetype length = 0; next < packing.names.size() && length < LongestArguments;) {
            const QString &name = packing.names[next++];
            // A dash alone would be the standard input all the same.
            arguments.append(name == u"-" ? u"./-"_s : name);
            length += FileName::toBytes(name).size() + qsizetype(sizeof(char *)) + 1;
        }
        result = programs.runIn(packing.folder, arguments).waitStatus();
    }
    return result;
}

void Archives::unpackArchive(const QString &archive, const QString &destination)
{
    QStringList arguments { u"/usr/bin/ditto"_s, u"-x"_s };
    if (PathText::extension(archive) == u"zip")
        arguments.append(u"-k"_s);
    arguments << archive << destination;
    const int number = showSheet(
        filled(localized("Unpacking '%@'..."), FileName::shown(PathText::lastComponent(archive))));
    task = std::make_shared<Task>();
    _tasks.removeIf([](const std::weak_ptr<Task> &old) { return old.expired(); });
    _tasks.append(task);
    workers.detach(Operation::Archive,
                   [this, arguments, number, running = task](OperationRecord &record) mutable {
                       record.item = arguments.last();
                       const ProgramEnd end = programs.run(
                           arguments, [&](pid_t process) { running->started(process); });
                       closeSheet(number);
                       taskDidTerminate(end);
                       if (end.succeeded())
                           syncIfRemovable(record.item);
                   });
}

void Archives::taskDidTerminate(const ProgramEnd &end) // worker thread
{
    // Cancelled by the program's own answer, or before it could give one.
    const bool cancelled =
        end.started && (end.status == CancelledStatus || end.status == 128 + SIGTERM);
    if (!end.succeeded() && !cancelled)
        alerts.ask(failure(localized("Unpacking failed!"), reasons(end.errorText)));
}

void Archives::cancelArchiving()
{
    if (task)
        task->terminate();
}

void Archives::cancelAll()
{
    for (const std::weak_ptr<Task> &each : std::as_const(_tasks))
        if (const auto running = each.lock())
            running->terminate();
}
