#include "operations/SingleSteps.h"

#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "operations/CopyMove.h"
#include "operations/DuplicateName.h"
#include "operations/Refusal.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "platform/Programs.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;

namespace {

QString badName()
{
    return localized("A name is neither empty nor '.' nor '..', and holds no '/'.");
}

// The system's reason why an item could not be given a name.
QString reasonOf(std::error_code error, const QString &name)
{
    if (!PathText::isItemName(name))
        return badName();
    return QString::fromStdString(error.message());
}

// What stands at the path by now is what the step has made or renamed.
void noteDone(DoneItems &done, DoneItem::Way way, const QString &path, const QString &from = {})
{
    if (const auto status = fileStatus(path, Links::NoFollow))
        done.add({ .way = way,
                   .from = from.isEmpty() ? ItemPlace() : ItemPlace::of(from),
                   .to = ItemPlace::of(path),
                   .trace = ItemTrace::of(*status) });
}

} // namespace

SingleSteps::SingleSteps(Alerts &alertsToAsk, Programs &programsToRun, Workspace &workspaceInUse,
                         CopyMove &engine)
    : alerts(alertsToAsk)
    , programs(programsToRun)
    , workspace(workspaceInUse)
    , copyMove(engine)
{
}

void SingleSteps::newFolder(const OperationRequest &request,
                            OperationRecord &record) // worker thread
{
    const QString name = request.items.value(0);
    record.item = PathText::joined(request.source, name);
    const std::error_code error = PathText::isItemName(name)
        ? FileSystem::makeFolder(record.item)
        : std::make_error_code(std::errc::invalid_argument);
    if (!error)
        return noteDone(record.done, DoneItem::NewFolder, record.item);
    record.refused = request;
    alerts.ask(
        Alert::failure(localized("Cannot create folder!"), lineAbout(name, reasonOf(error, name))));
}

void SingleSteps::newFile(const OperationRequest &request,
                          OperationRecord &record) // worker thread
{
    const QString name = request.items.value(0);
    record.item = PathText::joined(request.source, name);
    const std::error_code error = PathText::isItemName(name)
        ? FileSystem::makeFile(record.item)
        : std::make_error_code(std::errc::invalid_argument);
    if (!error)
        return noteDone(record.done, DoneItem::NewFile, record.item);
    record.refused = request;
    alerts.ask(
        Alert::failure(localized("Cannot create file!"), lineAbout(name, reasonOf(error, name))));
}

void SingleSteps::renameItem(const OperationRequest &request,
                             OperationRecord &record) // worker thread
{
    record.item = request.source; // stays selected when the name is refused
    // A new name that holds "/" would move the item.
    const bool sameFolder =
        PathText::parent(request.source) == PathText::parent(request.destination);
    const QString newName = PathText::lastComponent(request.destination);
    QString about = PathText::lastComponent(request.source);
    QString reason;
    if (!sameFolder)
        reason = badName();
    else if (FileFlags::isLocked(request.source))
        reason = localized("The item is locked.");
    else if (const auto error = FileSystem::renameItem(request.source, request.destination)) {
        reason = reasonOf(error, newName);
        if (error == std::errc::file_exists)
            about = newName;
    }
    if (reason.isEmpty()) {
        record.item = request.destination;
        noteDone(record.done, DoneItem::Renamed, request.destination, request.source);
        return;
    }
    record.refused = request;
    alerts.ask(Alert::failure(localized("Rename failed!"), lineAbout(about, reason)));
}

QStringList SingleSteps::moveAllToTrash(const OperationRequest &request,
                                        DoneItems &done) // worker thread
{
    // Nothing moves when one of them must not: the set succeeds or fails as one.
    const auto trash = workspace.trashRun(request.source);
    QStringList refused =
        removalRefusals(request, [&trash](const QString &name) { return trash->refusal(name); });
    if (!refused.isEmpty())
        return refused;
    for (const QString &name : request.items) {
        QString reason;
        const auto status = fileStatus(PathText::joined(request.source, name), Links::NoFollow);
        if (!trash->move(name, &reason))
            return { lineAbout(name, reason) };
        if (status)
            done.add({ .way = DoneItem::Trashed,
                       .from = { request.source, name },
                       .trace = ItemTrace::of(*status) });
    }
    return {};
}

DoneItems SingleSteps::deleteItems(const OperationRequest &request) // worker thread
{
    DoneItems done;
    const QStringList failed = moveAllToTrash(request, done);
    if (!failed.isEmpty())
        alerts.ask(Alert::failure(localized("Delete failed!"), shortened(failed)));
    return done;
}

DoneItems SingleSteps::createAlias(const OperationRequest &request) // worker thread
{
    DoneItems done;
    for (const QString &name : request.items) {
        const QString source = PathText::joined(request.source, name);
        const QString link = PathText::joined(request.destination, name);
        QString reason = badName();
        // -T: a link to a folder that stands there already is not to be entered.
        if (PathText::isItemName(name)) {
            const ProgramEnd end = programs.run({ u"/bin/ln"_s, u"-s"_s, u"-T"_s, source, link });
            if (end.succeeded()) {
                noteDone(done, DoneItem::Linked, link);
                continue;
            }
            reason = end.errorText;
        }
        alerts.ask(Alert::failure(
            filled(localized("Create alias for '%@' failed!"), FileName::shown(name)),
            FileName::shown(reason)));
    }
    return done;
}

DoneItems SingleSteps::duplicateItem(const QString &source,
                                     const QString &destination) // worker thread
{
    DoneItems done;
    if (const auto reason = copyMove.duplicate(source, destination, done))
        alerts.ask(Alert::failure(localized("Duplicate failed!"), *reason));
    return done;
}

DoneItems SingleSteps::duplicateItems(const OperationRequest &request,
                                      RunQueue::Ticket ticket) // worker thread
{
    DoneItems done;
    RunQueue &queue = copyMove.queue();
    if (!queue.wait(ticket))
        return done;
    QStringList failed;
    for (const QString &name : request.items) {
        if (queue.isCancelled())
            break;
        const auto reason = !PathText::isItemName(name)
            ? std::optional(localized("It is no item."))
            : copyMove.duplicate(
                PathText::joined(request.source, name),
                PathText::joined(request.source, freeNameOfDuplicate(request.source, name)), done);
        if (reason)
            failed.append(lineAbout(name, *reason));
    }
    queue.end(ticket);
    if (!failed.isEmpty())
        alerts.ask(Alert::failure(localized("Duplicate failed!"), shortened(failed)));
    return done;
}
