#include "operations/SetAside.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "platform/Workspace.h"

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

// Tells whether a folder is the one it was, or just the place where its volume is not mounted now.
QString folderNumber(const QString &folder)
{
    const auto status = fileStatus(folder, Links::Follow);
    return status ? QString::number(status->identity.inode) : QString();
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
    taken._note =
        journal.write({ taken._target, taken._sibling, folderNumber(PathText::parent(target)) });
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
    // A mount point inside, say, or no rights: what is left of it stays, and can be seen.
    if (FileSystem::removeTree(_sibling) && exists(_sibling)) {
        qCWarning(log) << "A replaced item could not be removed:" << _sibling;
        if (!keepBeside())
            return;
    }
    _note->remove();
}

bool SetAside::comeBack() const
{
    return !FileSystem::renameNoReplace(_sibling, _target);
}

// In the Trash it is to carry its own name, so it goes there from a folder made for the purpose.
QString SetAside::holder() const
{
    return _sibling + u"-held"_s;
}

QString SetAside::held() const
{
    return PathText::joined(holder(), PathText::lastComponent(_target));
}

bool SetAside::trash(Workspace &workspace) const
{
    FileSystem::makeFolder(holder());
    bool trashed = false;
    if (!FileSystem::renameNoReplace(_sibling, held())) {
        trashed = workspace.moveToTrash(held());
        if (!trashed)
            FileSystem::renameNoReplace(held(), _sibling);
    }
    FileSystem::removeEmptyFolder(holder());
    return trashed;
}

bool SetAside::keepBeside() const
{
    QString name = PathText::lastComponent(_target);
    for (int number = 1; number < 1000; ++number) {
        const auto failed = FileSystem::renameNoReplace(
            _sibling, PathText::joined(PathText::parent(_target), name + u" (%1)"_s.arg(number)));
        if (!failed)
            return true;
        if (failed == std::errc::filename_too_long)
            name.chop(name.size() > 1 && name.back().isLowSurrogate()
                              && name[name.size() - 2].isHighSurrogate()
                          ? 2
                          : 1);
        else if (failed != std::errc::file_exists)
            return false;
    }
    return false;
}

std::optional<Settled> SetAside::save(Workspace &workspace) const
{
    if (trash(workspace))
        return Settled::WentToTrash;
    if (keepBeside())
        return Settled::KeptBeside;
    return std::nullopt;
}

Settled SetAside::settleFailure(Workspace &workspace)
{
    std::optional<Settled> settled = Settled::CameBack;
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
    // What could not even be renamed keeps its note: the next start tries again.
    if (settled)
        _note->remove();
    return settled.value_or(Settled::KeptBeside);
}

bool SetAside::settleInterrupted(Workspace &workspace, const QString &folder,
                                 QStringList &told) const
{
    // Killed on the way to the Trash.
    if (exists(held()))
        FileSystem::renameNoReplace(held(), _sibling);
    FileSystem::removeEmptyFolder(holder());
    // Gone with its volume is not gone: then it is for a later start.
    if (!exists(_sibling))
        return folderNumber(PathText::parent(_target)) == folder;
    const auto settled =
        !exists(_target) && comeBack() ? std::optional(Settled::CameBack) : save(workspace);
    told += filled(settled == Settled::CameBack
                       ? localized("'%@' is what it was; replacing it was interrupted.")
                       : settled == Settled::WentToTrash
                       ? localized("'%@' was replaced; the old item is in the Trash.")
                       : localized("'%@' was replaced; the old item stands beside it."),
                   FileName::shown(_target));
    return settled.has_value();
}

QStringList SetAside::replay(const Journal &journal, Workspace &workspace)
{
    QStringList told;
    const auto notes = journal.abandoned();
    for (const auto &note : notes) {
        const QStringList &fields = note->fields();
        // A note cut short was never acted on.
        if (fields.size() != 3
            || SetAside(fields[0], fields[1], Work::Move)
                   .settleInterrupted(workspace, fields[2], told))
            note->remove();
    }
    return told;
}
