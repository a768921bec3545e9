#pragma once

#include "files/DirectoryReader.h"
#include "files/HiddenRule.h"
#include "files/MountTable.h"
#include "model/ListingData.h"

#include <QSet>

class FolderWatch;

// How the items of one folder are looked at for its listing: each through the folder's descriptor,
// but for those that another machine or program would have to answer for.
class ItemLook final {
public:
    ItemLook(const QString &folder, const ListingOptions &options);

    // Follows the folder by the watch, where one is given and the kernel alone answers for it.
    std::error_code open(FolderWatch *watch = nullptr);
    DirectoryReader &reader() { return _reader; }

    bool hidesName(QByteArrayView name); // one thread
    // Fills in the record of an item, whose name has a NUL behind it; false when the item's own
    // marks hide it. `type`: DT_*. `folderOfNames`: what leads to the item from where the thread
    // works, with a slash at its end or empty. Any thread.
    // `own`: its own status, where that is known.
    bool look(const char *name, unsigned char type, ListingRecord &record,
              const QByteArray &folderOfNames, const std::optional<FileStatus> &own = {}) const;
    const QByteArray &folderOfNames() const { return _folderOfNames; } // from anywhere
    ListingRecord parent() const; // of the row ".."

private:
    bool mayHang(const QByteArray &name, unsigned char type) const;

    const QString _folder;
    const ListingOptions _options;
    QByteArray _folderOfNames;
    DirectoryReader _reader;
    HiddenRule _hiddenRule;
    const MountTable _mounts = MountTable::current();
    QString _place; // the folder's own path, links resolved; "" where no link is to be distrusted
    QSet<QByteArray> _slowMounts; // names of mount points that are not to be asked
    bool _marks = true; // whether the device keeps attributes at all
};
