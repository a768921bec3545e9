#pragma once

#include "files/FileStatus.h"
#include "files/MountTable.h"

#include <QHash>
#include <QStringList>

// The Trash of the desktop. Any thread.
namespace Trash {

// The Trash for items of one folder. What holds for all of them is looked at once, at the start:
// for a run, not to be kept. Used by one thread.
class Folder final {
public:
    explicit Folder(const QString &path);

    // Why the item cannot go to the Trash, as a sentence for a person; "" when nothing speaks
    // against it. Refused are "/", the home folder, mount points, the folders of the Trash, any
    // folder that holds one of these, what lies in the Trash already, names too long for the
    // Trash's own record, and what lies where there is no Trash or no right to move it.
    QString refusal(const QString &name);

    // The same where the item is to go for good: "/", the home folder, mount points, the folders of
    // the Trash and what holds one of these are refused.
    QString refusalForGood(const QString &name) const;

    // Moves one item; links are moved themselves. Never removes for good. `reason` gets why it
    // failed. `origin`: where "Restore" is to bring it back, when that is not where it lies now.
    bool moveItem(const QString &name, QString *reason = nullptr, const QString &origin = {});

private:
    struct Records {
        QString folder;
        qsizetype longestName; // bytes
    };
    QString itemPath(const QString &name) const;
    QString whyItMustStay(const QString &item, const FileStatus &status) const;
    bool isTooLong(const QString &name) const;

    QString _path;
    MountTable _mounts = MountTable::current();
    QStringList _kept; // folders that no item may hold
    QList<Records> _records;
    bool _liesInTrash = false;
    QString _notWritable; // why
    QHash<QString, FileIdentity> _allowed; // by name
};

// The same for one item by its path.
bool moveItem(const QString &path, QString *reason = nullptr, const QString &origin = {});

} // namespace Trash
