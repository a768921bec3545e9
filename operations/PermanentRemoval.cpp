#include "operations/PermanentRemoval.h"

#include "base/Localized.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/Staging.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"
#include "operations/KeptBeside.h"
#include "operations/Refusal.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

#include <fcntl.h>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

namespace {

QString reasonText(const std::error_code &failed)
{
    return QString::fromStdString(failed.message());
}

QString whyItStays(const TreeRemovalEnd &end) // "": it is gone
{
    return end.failed ? end.reason() : QString();
}

QString isAnotherOne()
{
    return localized("It is not the item any more that was shown.");
}

} // namespace

PermanentRemoval::PermanentRemoval(Alerts &alertsToAsk, Workspace &workspaceInUse,
                                   const Journal &journalToWrite)
    : alerts(alertsToAsk)
    , workspace(workspaceInUse)
    , journal(journalToWrite)
{
}

QStringList PermanentRemoval::refusals(const OperationRequest &request) const
{
    const auto trash = workspace.trashRun(request.source);
    return removalRefusals(request,
                           [&trash](const QString &name) { return trash->refusalForGood(name); });
}

void PermanentRemoval::removeItems(const OperationRequest &request, const QList<FileIdentity> &seen,
                                   const std::function<bool()> &isCancelled) // worker thread
{
    QStringList failed = refusals(request);
    if (failed.isEmpty()) {
        const Descriptor folder(SystemCalls::openat(AT_FDCWD, FileName::toBytes(request.source),
                                                    O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder.isOpen())
            failed.append(
                lineAbout(PathText::lastComponent(request.source), reasonText(errorOf(-1))));
        Staging staging(folder.number(), request.source, journal);
        for (qsizetype at = 0; folder.isOpen() && at < request.items.size() && !isCancelled();
             ++at) {
            const QString &name = request.items[at];
            const QString reason =
                remove(folder.number(), staging, FileName::toBytes(name), seen.value(at));
            if (!reason.isEmpty())
                failed.append(lineAbout(name, reason));
        }
    }
    if (!failed.isEmpty())
        alerts.ask(Alert::failure(localized("Delete failed!"), shortened(failed)));
}

QString PermanentRemoval::remove(int folder, Staging &staging, const QByteArray &name,
                                 const FileIdentity &seen) const
{
    const auto status = statxStatus(folder, name, Links::NoFollow);
    if (!status)
        return reasonText(errorOf(-1));
    if (status->identity != seen)
        return isAnotherOne();
    // Where nothing can be staged, on a full disk perhaps, it goes from where it stands.
    if (status->kind == FileKind::Directory && !staging.open())
        return removeFolder(folder, staging, name, seen);
    return whyItStays(removeTreeAt(folder, name, seen, ClosedFolders::Open));
}

QString PermanentRemoval::removeFolder(int folder, Staging &staging, const QByteArray &name,
                                       const FileIdentity &seen) const
{
    const QByteArray entry = staging.entry({ StagedName::Removing, seen.inode, name });
    if (Rename::noReplace(folder, name, staging.descriptor(), entry)) {
        // One that nobody may open, not even its owner, cannot leave before it is opened.
        return whyItStays(removeTreeAt(folder, name, seen, ClosedFolders::Open));
    }
    const auto taken = statxStatus(staging.descriptor(), entry, Links::NoFollow);
    const bool isThatOne = taken && taken->identity == seen;
    QString reason = isThatOne
        ? whyItStays(removeTreeAt(staging.descriptor(), entry, seen, ClosedFolders::Open))
        : isAnotherOne();
    if (reason.isEmpty())
        return {};
    if (!Rename::noReplace(staging.descriptor(), entry, folder, name))
        return reason;
    const auto beside = keepBeside(staging.descriptor(), entry, folder, name);
    return reason + u' '
        + (beside ? filled(localized("What is left of it stands beside it as '%@'."),
                           FileName::shown(FileName::fromBytes(*beside)))
                  : filled(localized("What is left of it is in '%@'."),
                           FileName::shown(staging.path())));
}
