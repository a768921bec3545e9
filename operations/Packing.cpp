#include "operations/Packing.h"

#include "files/Descriptor.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/SystemCalls.h"
#include "operations/ArchiveTask.h"
#include "operations/PackedItems.h"
#include "operations/SmallPrint.h"
#include "operations/SyncRemovable.h"
#include "platform/Alerts.h"
#include "platform/Programs.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr char Program[] = "/usr/bin/zip";
// Its own answers, as wait(2) has them.
constexpr int NothingToDo = 12 << 8;
constexpr int CannotWrite = 15 << 8;
constexpr int WrongArguments = 16 << 8;
constexpr int NotAllRead = 18 << 8; // the archive is there all the same
constexpr qint64 EmptyArchive = 22; // bytes
// The kernel's limits: one argument, and with room to spare all of them together.
constexpr qsizetype LongestArgument = 128 * 1024 - 1; // bytes
constexpr qsizetype LongestArguments = 1024 * 1024; // bytes
constexpr qsizetype MostComplaints = 1000;

// Whether a name means only itself to the shell, in double quotes, and to zip.
bool isPlain(const QString &name)
{
    return !name.startsWith(u'-') && name != u"@"
        && std::none_of(name.begin(), name.end(),
                        [](QChar letter) { return u"\"$`\\\n"_s.contains(letter); });
}

QStringList each(const QString &line, const QStringList &paths)
{
    QStringList lines;
    for (const QString &path : paths)
        lines += filled(line, FileName::shown(path));
    return lines;
}

// Whether the bytes that zip writes last have arrived: a server may have refused some after all.
bool isWholeArchive(const QString &path)
{
    const Descriptor archive(
        SystemCalls::openat(AT_FDCWD, FileName::toBytes(path), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    const off_t end = archive.isOpen() ? ::lseek(archive.number(), 0, SEEK_END) : 0;
    char last[EmptyArchive];
    return end > EmptyArchive
        && ::pread(archive.number(), last, sizeof last, end - EmptyArchive) == EmptyArchive
        && QByteArrayView(last, sizeof last).startsWith("PK\5\6");
}

} // namespace

QString archiveFileName(const QString &archiveName)
{
    return PathText::extension(archiveName) == u"zip" ? archiveName : archiveName + u".zip"_s;
}

Alert replaceArchiveQuestion(const QString &details)
{
    return { .style = Alert::Style::Informational,
             .title = localized("Twinleaf - Information"),
             .text = localized("Archive already exists! Override?"),
             .details = details,
             .buttons = { { Alert::No, localized("No") }, { Alert::Yes, localized("Yes") } },
             .cancel = Alert::No };
}

Packing::Packing(const PackingJob &job, Alerts &alertsToAsk, Programs &programsToRun,
                 Workspace &workspace, const Journal &journal, ArchiveTask &taskToWatch)
    : _job(job)
    , alerts(alertsToAsk)
    , programs(programsToRun)
    , task(taskToWatch)
    , _transfer(Operation::Copy, job.folder, job.destination, programsToRun, workspace, journal, {})
    , _shown(job.replaced)
{
}

void Packing::run() // worker thread
{
    if (!PathText::isItemName(_job.archiveName))
        return fail(CannotWrite, { FileName::shown(_job.archiveName) });
    if (!settleName())
        return;

    const auto destination = fileStatus(_job.destination, Links::Follow);
    PackedItems items(destination ? std::optional(destination->identity) : std::nullopt,
                      _shown ? std::optional(_shown->identity) : std::nullopt,
                      [this] { return task.isCancelled(); });
    QStringList names;
    QStringList circular;
    for (const QString &name : _job.names)
        (items.leadsInCircles(PathText::joined(_job.folder, name)) ? circular : names) += name;
    if (!items.pathOfOld().isEmpty())
        return fail(WrongArguments,
                    each(localized("'%@' is the archive that would be replaced, and is itself "
                                   "among the items to be packed. Nothing was changed."),
                         { items.pathOfOld() }));

    int result = 0;
    bool isEmpty = true;
    const auto unmade = _transfer.make(_job.archiveName, [&](const QString &archive) {
        if (task.isCancelled())
            return;
        result = runZip(archive, names, circular, items.holdsDestination());
        const auto made = fileStatus(archive, Links::NoFollow);
        isEmpty = !made || made->size <= EmptyArchive;
        if (made && result == NothingToDo)
            result = 0; // others were packed by another run
        if (result == 0 && !isEmpty && !isWholeArchive(archive))
            result = CannotWrite;
    });
    if (task.isCancelled())
        return;
    if (unmade)
        return fail(CannotWrite, { QString::fromStdString(unmade.message()) });
    if (isEmpty || (result != 0 && result != NotAllRead)) {
        // A shell's words for it are not a person's.
        const bool isThere = ::access(Program, X_OK) == 0;
        return fail(result != 0 ? result : NothingToDo,
                    isThere ? _complaints + shownLines(_errorText)
                            : QStringList { localized("The program 'zip', which packs archives, "
                                                      "is not installed.") });
    }

    const QStringList lacking =
        _complaints + each(localized("'%@' could not be read."), items.closedFolders());
    // One that lacks something was not agreed to: the old one can still be had.
    const bool isPlaced = place(lacking.isEmpty() ? Standing::Replace : Standing::ToTrash);
    const QStringList staying = _transfer.finish();
    if (!isPlaced)
        return tell(0, {}, {}, staying);
    if (const auto unwritten = syncIfRemovable(_job.destination))
        alerts.ask(*unwritten);
    tell(result, lacking, items.circles(), staying);
}

void Packing::tell(int result, const QStringList &lacking, const QStringList &circles,
                   const QStringList &staying)
{
    const bool isWhole = lacking.isEmpty();
    QStringList lines = lacking;
    if (!isWhole)
        lines += localized("The archive holds everything else.");
    if (!isWhole && _shown)
        lines += localized("The archive that it replaces is in the Trash.");
    lines += each(localized("'%@' leads in a circle: the links of the item are packed as "
                            "links."),
                  circles);
    lines += staying;
    if (lines.isEmpty())
        return;
    QString text = localized("Something was left behind.");
    if (result != 0)
        text = filled(localized("Archiving failed! Result code: %i"), result);
    else if (!isWhole)
        text = localized("Not everything could be packed.");
    else if (!circles.isEmpty())
        text = localized("Links were packed as links.");
    alerts.ask(remark(text, lines));
}

bool Packing::settleName(const QString &details)
{
    const auto found = _transfer.atDestination(_job.archiveName);
    const auto refuse = [this](const QString &reason) {
        fail(CannotWrite, { reason });
        return false;
    };
    if (found.failure)
        return refuse(QString::fromStdString(found.failure.message()));
    if (isFolder(found.status))
        return refuse(localized("A folder has this name."));
    if (found.status && FileFlags::isLocked(PathText::joined(_job.destination, _job.archiveName)))
        return refuse(localized("The archive that has this name is locked."));
    if (found.status && !(_shown && isUnchanged(*_shown, *found.status))
        && alerts.ask(replaceArchiveQuestion(details)) != Alert::Yes)
        return false;
    _shown = found.status;
    return true;
}

// What came to the name meanwhile is asked about again, with the new archive waiting.
bool Packing::place(Standing standing)
{
    for (;;) {
        const TransferEnd end = _transfer.placeMade(_shown ? standing : Standing::Refuse, _shown);
        if (end.what == TransferEnd::Done)
            return true;
        if (end.what == TransferEnd::Failed) {
            fail(CannotWrite, { end.reason });
            return false;
        }
        if (task.isCancelled()
            || !settleName(localized("It came there, or was changed, while the new one was "
                                     "packed. \"No\" keeps it and discards the new one.")))
            return false;
    }
}

void Packing::fail(int code, const QStringList &reasons)
{
    alerts.ask(remark(filled(localized("Archiving failed! Result code: %i"), code), reasons));
}

QString Packing::commandLine(const QString &folder, const QString &archive,
                             const QStringList &names)
{
    QString line = u"cd \""_s + folder + u"\" && "_s + QLatin1StringView(Program) + u" -r \""_s
        + archive + u"\" "_s;
    for (const QString &name : names)
        line += u'"' + name + u"\" "_s;
    return line;
}

int Packing::runZip(const QString &archive, const QStringList &names, const QStringList &circular,
                    bool holdsDestination) // worker thread
{
    const QString line = commandLine(_job.folder, archive, names);
    if (circular.isEmpty() && !holdsDestination && isPlain(_job.folder) && isPlain(archive)
        && std::all_of(names.begin(), names.end(), isPlain)
        && FileName::toBytes(line).size() < LongestArgument) {
        const ProgramEnd end =
            programs.runShell(line,
                              { [this](pid_t process) { task.started(process); },
                                [this](const QByteArray &text) { keepLine(text); } });
        _errorText = end.errorText;
        return end.waitStatus();
    }
    // Without a shell, which would run what a name holds. The hidden folder must not be packed
    // into its own archive; a "*" of zip matches slashes, too.
    const QStringList options = holdsDestination
        ? QStringList { u"-x"_s,
                        u"*/"_s + PathText::lastComponent(_transfer.hiddenFolder()) + u"/*"_s }
        : QStringList();
    const int result = runWithoutShell(archive, options, names);
    if (circular.isEmpty() || (result != 0 && result != NotAllRead))
        return result;
    const int other = runWithoutShell(archive, QStringList { u"-y"_s } + options, circular);
    return other != 0 ? other : result;
}

int Packing::runWithoutShell(const QString &archive, const QStringList &options,
                             const QStringList &names) // worker thread
{
    // zip is told that no name is an option. More names than one run takes are added by the next.
    int result = 0;
    for (qsizetype next = 0; next < names.size() && !task.isCancelled();) {
        QStringList arguments { QString::fromLatin1(Program), u"-r"_s, archive };
        arguments << options << u"--"_s;
        for (qsizetype length = 0; next < names.size() && length < LongestArguments;) {
            const QString &name = names[next++];
            // A dash alone would be the standard input all the same.
            arguments.append(name == u"-" ? u"./-"_s : name);
            length += FileName::toBytes(name).size() + qsizetype(sizeof(char *)) + 1;
        }
        const ProgramEnd end =
            programs.runIn(_job.folder, arguments,
                           { [this](pid_t process) { task.started(process); },
                             [this](const QByteArray &text) { keepLine(text); } });
        _errorText += end.errorText;
        const int status = end.waitStatus();
        if (status != 0 && status != NotAllRead && status != NothingToDo)
            return status;
        if (status == NotAllRead || result == 0)
            result = status;
    }
    return result;
}

// zip names on its standard output what it leaves out, and may end well all the same.
void Packing::keepLine(const QByteArray &line)
{
    static constexpr QByteArrayView Warning = "zip warning: ";
    const QByteArray text = line.trimmed();
    if (text.startsWith(Warning) && _complaints.size() < MostComplaints
        && !text.endsWith("Not all files were readable") && !text.endsWith("zip file empty"))
        _complaints += FileName::shown(FileName::fromBytes(text.mid(Warning.size())));
}
