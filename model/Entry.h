#pragma once

#include "files/FileStatus.h"

#include <QByteArrayView>
#include <QDateTime>
#include <QIcon>
#include <QString>
#include <QVariantList>

#include <memory>
#include <optional>

struct ListingData;

// One row of a listing: a view into it that keeps it alive, cheap to copy. What only a visible row
// needs (size text, kind text, icon, date) is made when it is asked for. Main thread.
class Entry final {
public:
    Entry(std::shared_ptr<const ListingData> listing, quint32 record);

    QIcon icon() const;
    QString name() const; // ".." for the parent row
    QString size() const; // "--" for folders and packages, "0" when the size is unknown
    // Bytes; nothing where that would take a walk, or is unknown.
    std::optional<qint64> knownSize() const;
    qint64 pureSize() const; // bytes; 0 for folders, packages and ".."
    QDateTime date() const; // modification date; invalid when unknown
    QString type() const;
    QString path() const; // of "..": the listed folder itself
    int finderLabel() const;

    QByteArrayView nameBytes() const; // as on the disk; valid as long as the entry
    // Whether both read alike: the same name, size text, date and type.
    bool readsLike(const Entry &other) const;

    bool isParent() const; // the row ".."
    bool isFolder() const; // its type is the localized "Folder"
    bool isLink() const; // a symbolic link, whatever it leads to

    QVariantList entryAsArray() const;
    // Kept: unlike entryAsArray, the path comes first.
    QVariantList entryAsArrayWithoutIcon() const;

private:
    std::shared_ptr<const ListingData> _listing;
    quint32 _record;
};
