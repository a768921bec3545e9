#include "operations/SetAside.h"

#include "platform/FileSystem.h"
#include "platform/Workspace.h"
#include "util/PathText.h"

#include <QLoggingCategory>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.operations")

QString hiddenSibling(const QString &path)
{
    return PathText::joined(PathText::parent(path),
                            u".twinleaf-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

} // namespace

SetAside::SetAside(QString target, QString sibling, Work work)
    : _target(std::move(target))
    , _sibling(std::move(sibling))
    , _work(work)
{
}

std::optional<SetAside> SetAside::take(const QString &target, Work work, const Journal &journal)
{
    SetAside taken(target, hiddenSibling(target), work);
    taken._note = journal.write({ taken._target, taken._sibling });
    if (!taken._note) {
        qCWarning(log, "The journal cannot be written; nothing was replaced.");
        return std::nullopt;
    }
    if (FileSystem::renameNoReplace(target, taken._sibling)) {
        taken._note->remove();
        return std::nullopt;
    }
    return taken;
}

void SetAside::discard()
{
    // A mount point inside, say, or no rights: what is left of it stays.
    if (FileSystem::removeTree(_sibling) && exists(_sibling))
        qCWarning(log) << "A replaced item could not be removed:" << _sibling;
    _note->remove();
}

bool SetAside::comeBack() const
{
    return !FileSystem::renameNoReplace(_sibling, _target);
}

Settled SetAside::save(Workspace &workspace) const
{
    // In the Trash it is to carry its own name, so it goes there from a folder made for the
    // purpose.
    const QString holder = hiddenSibling(_target);
    const QString held = PathText::joined(holder, PathText::lastComponent(_target));
    if (!FileSystem::makeFolder(holder)) {
        if (!FileSystem::renameNoReplace(_sibling, held)) {
            const bool trashed = workspace.moveToTrash(held);
            if (!trashed)
                FileSystem::renameNoReplace(held, _sibling);
            FileSystem::removeEmptyFolder(holder);
            if (trashed)
                return Settled::WentToTrash;
        } else {
            FileSystem::removeEmptyFolder(holder);
        }
    }
    for (int number = 1; number < 1000; ++number) {
        if (!FileSystem::renameNoReplace(_sibling, u"%1 (%2)"_s.arg(_target).arg(number)))
            break;
    }
    return Settled::KeptBeside;
}

Settled SetAside::settleFailure(Workspace &workspace)
{
    auto settled = Settled::CameBack;
    const auto left = fileStatus(_target, Links::NoFollow);
    if (!left) {
        if (!comeBack())
            settled = save(workspace);
    } else {
        // A copied file's partial is the program's own work; a folder may be of use, and what a
        // move left may be the only copy.
        const bool partial = _work == Work::CopyFile && left->kind != FileKind::Directory;
        if (!partial || FileSystem::removeTree(_target) || !comeBack())
            settled = save(workspace);
    }
    _note->remove();
    return settled;
}

void SetAside::replay(const Journal &journal, Workspace &workspace)
{
    const auto notes = journal.abandoned();
    for (const auto &note : notes) {
        const QStringList &fields = note->fields();
        if (fields.size() == 2 && exists(fields[1])) {
            const SetAside open(fields[0], fields[1], Work::Move);
            const bool back = !exists(fields[0]) && open.comeBack();
            qCWarning(log) << "An interrupted replacement was settled:" << fields[0]
                           << (back || open.save(workspace) != Settled::WentToTrash
                                   ? "the old item was kept"
                                   : "the old item is in the Trash");
        }
        note->remove();
    }
}
