#include "operations/InterruptedRuns.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FolderMark.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/Staging.h"
#include "files/StatxStatus.h"
#include "files/TreeRemoval.h"
#include "operations/KeptBeside.h"
#include "platform/Workspace.h"

#include <QHash>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// What a note says: the folder, and beside it the items that stand elsewhere.
struct Record {
    QString folder;
    QString mark;
    QString name; // of the staging folder
    quint64 home = 0; // its inode; 0: it was never made
    struct Elsewhere {
        bool moved; // exchanged with its target; else copied, and to be removed
        QString source;
        QString name;
        quint64 inode;
        quint64 atTarget; // the inode of what it was exchanged with, or of its copy
        qint64 modified; // of what it was exchanged with, nanoseconds since 1970
    };
    QList<Elsewhere> elsewhere {};
    QHash<QString, QString> names {}; // the whole ones of entries that have them cut
};

// A note cut short was not acted on from there.
std::optional<Record> recordOf(const QStringList &fields)
{
    if (fields.size() < 3)
        return std::nullopt;
    Record record { fields[0], fields[1], fields[2] };
    for (qsizetype at = 3; at < fields.size();) {
        const QString &kind = fields[at];
        if (kind == u"home"_s && at + 1 < fields.size()) {
            record.home = fields[at + 1].toULongLong();
            at += 2;
        } else if (kind == u"name"_s && at + 2 < fields.size()) {
            record.names.insert(fields[at + 1], fields[at + 2]);
            at += 3;
        } else if (at + 4 < fields.size()) {
            record.elsewhere.append({ kind == u"moved"_s, fields[at + 1], fields[at + 2],
                                      fields[at + 3].toULongLong(),
                                      fields[at + 4].section(u' ', 0, 0).toULongLong(),
                                      fields[at + 4].section(u' ', 1).toLongLong() });
            at += 5;
        } else {
            break;
        }
    }
    return record;
}

Descriptor openFolderAt(int folder, const QByteArray &name)
{
    return Descriptor(::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

class Settlement {
public:
    Settlement(const Record &record, Workspace &workspaceInUse,
               const std::function<void(const QString &)> &teller)
        : _record(record)
        , workspace(workspaceInUse)
        , _tell(teller)
        , _folder(::open(FileName::toBytes(record.folder).constData(),
                         O_RDONLY | O_DIRECTORY | O_CLOEXEC))
        , _keepsInodes(keepsInodes(_folder.number()))
    {
    }

    bool folderIsThere() const
    {
        if (!_folder.isOpen())
            return false;
        // Not every file system's mark lasts: then the name, which no other folder has, decides.
        return folderMark(_folder.number()) == _record.mark
            || ::faccessat(_folder.number(), FileName::toBytes(_record.name), F_OK,
                           AT_SYMLINK_NOFOLLOW)
            == 0;
    }

    // Whether nothing is left to be settled.
    bool run()
    {
        for (const auto &item : _record.elsewhere)
            settleElsewhere(item);
        const QByteArray name = FileName::toBytes(_record.name);
        _staging = openFolderAt(_folder.number(), name);
        if (!_staging.isOpen())
            return errno == ENOENT;
        const auto status = statusOf(_staging.number());
        if (!status)
            return false;
        if (_record.home == 0 && status->owner == ::geteuid()) // never used
            return ::unlinkat(_folder.number(), name, AT_REMOVEDIR) == 0;
        if (status->owner != ::geteuid()
            || (_keepsInodes && status->identity.inode != _record.home))
            return false; // another one stands there now
        for (const QByteArray &entry : names(_staging.number()))
            settleEntry(entry);
        return ::unlinkat(_folder.number(), name, AT_REMOVEDIR) == 0;
    }

private:
    static QList<QByteArray> names(int folder)
    {
        QList<QByteArray> all;
        DirectoryReader::readNames(folder, all);
        return all;
    }

    QString targetPath(const QByteArray &name) const
    {
        return PathText::joined(_record.folder, FileName::fromBytes(name));
    }
    void tell(const QString &line, const QString &path)
    {
        _tell(filled(line, FileName::shown(path)));
    }

    void settleEntry(const QByteArray &entry)
    {
        auto staged = StagedName::fromText(entry);
        const auto status = statxStatus(_staging.number(), entry, Links::NoFollow);
        if (!staged || !status)
            return;
        if (const auto whole = _record.names.constFind(FileName::fromBytes(entry));
            whole != _record.names.cend())
            staged->name = FileName::toBytes(*whole);
        switch (staged->role) {
        case StagedName::Making:
            return removeCopy(entry, *status, staged->name);
        case StagedName::Removing:
            // Any other one came to its name at the last moment, and nobody agreed to lose that.
            if (!_keepsInodes || status->identity.inode != staged->number)
                return save(_staging.number(), entry, staged->name);
            return remove(entry, *status, targetPath(staged->name),
                          localized("Deleting '%@' for good was interrupted; the rest of it was "
                                    "removed."));
        case StagedName::Unpacking:
            return remove(entry, *status, FileName::fromBytes(staged->name),
                          localized("Unpacking '%@' was interrupted; what had not arrived was "
                                    "removed."));
        case StagedName::Ready:
            if (_keepsInodes && status->identity.inode == staged->number)
                return removeCopy(entry, *status, staged->name);
            return save(_staging.number(), entry, staged->name);
        case StagedName::Old:
            if (!Rename::noReplace(_staging.number(), entry, _folder.number(), staged->name))
                return tell(localized("'%@' is what it was; replacing it was interrupted."),
                            targetPath(staged->name));
            return save(_staging.number(), entry, staged->name);
        case StagedName::Trash: {
            const Descriptor holder = openFolderAt(_staging.number(), entry);
            for (const QByteArray &name : names(holder.number()))
                save(holder.number(), name, name);
            ::unlinkat(_staging.number(), entry, AT_REMOVEDIR);
        }
        }
    }

    // Something that is whole elsewhere.
    void remove(const QByteArray &entry, const FileStatus &status, const QString &shown,
                const QString &done)
    {
        const auto failed =
            removeTreeAt(_staging.number(), entry, status.identity, ClosedFolders::Open).failed;
        if (!failed)
            return tell(done, shown);
        tell(localized("What is left of an interrupted operation on '%@' could not be removed."),
             shown);
    }
    void removeCopy(const QByteArray &entry, const FileStatus &status, const QByteArray &name)
    {
        remove(entry, status, targetPath(name),
               localized("An unfinished copy of '%@' was removed."));
    }

    // The old item of a replacement that was done.
    void save(int from, const QByteArray &entry, const QByteArray &name)
    {
        const QString staging = PathText::joined(_record.folder, _record.name);
        const bool trashed =
            handOut(_staging.number(), staging, from, entry, name, [&](const QString &path) {
                return workspace.moveToTrash(path, nullptr, targetPath(name));
            });
        if (trashed)
            return tell(localized("'%@' was replaced; the old item is in the Trash."),
                        targetPath(name));
        const auto beside = keepBeside(from, entry, _folder.number(), name);
        tell(localized("'%@' is the old item of a replacement."),
             beside ? targetPath(*beside) : PathText::joined(staging, FileName::fromBytes(entry)));
    }

    void settleElsewhere(const Record::Elsewhere &item)
    {
        const QByteArray name = FileName::toBytes(item.name);
        const QString source = PathText::joined(item.source, item.name);
        const auto atTarget = statxStatus(_folder.number(), name, Links::NoFollow);
        const auto atSource = fileStatus(source, Links::NoFollow);
        if (!atTarget || !atSource)
            return;
        const FileIdentity &given = atSource->identity;
        const FileIdentity &arrived = atTarget->identity;
        if (!item.moved) {
            if (given.inode == item.inode && (!_keepsInodes || arrived.inode == item.atTarget))
                tell(localized("'%@' was copied but is still there; moving it was interrupted."),
                     source);
            return;
        }
        // The names were exchanged: what stands at the source is what the move has replaced.
        if (given.device != arrived.device || given.inode != item.atTarget
            || arrived.inode != item.inode)
            return;
        // Once that was gone, its number may have become that of a new item.
        const bool isOld = atSource->modified == item.modified;
        tell(isOld
                     && workspace.moveToTrash(source, nullptr,
                                              PathText::joined(_record.folder, item.name))
                 ? localized("'%@' was replaced; the old item is in the Trash.")
                 : localized("'%@' is the old item of a replacement."),
             source);
    }

    const Record &_record;
    Workspace &workspace;
    const std::function<void(const QString &)> &_tell;
    Descriptor _folder;
    bool _keepsInodes;
    Descriptor _staging;
};

} // namespace

QStringList foldersOfRun(const Journal::Note &note)
{
    QStringList folders;
    if (const auto record = recordOf(note.fields())) {
        folders.append(record->folder);
        for (const auto &item : record->elsewhere)
            folders.append(item.source);
        folders.removeDuplicates();
    }
    return folders;
}

void settleInterruptedRun(Journal::Note &note, Workspace &workspace,
                          const std::function<void(const QString &)> &tell)
{
    const auto record = recordOf(note.fields());
    if (!record) {
        note.remove();
        return;
    }
    Settlement settlement(*record, workspace, tell);
    if (settlement.folderIsThere()) {
        if (settlement.run())
            note.remove();
    } else if (!exists(record->folder)
               && fileSystemMark(record->folder) == record->mark.section(u'.', 0, 0)) {
        note.remove(); // not away with its volume, but gone
    }
}
