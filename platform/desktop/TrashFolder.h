#pragma once

#include "files/Descriptor.h"
#include "files/FileStatus.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

// The Trash folders of this person and what their records say, by freedesktop.org's rules for the
// Trash, version 1.0. Any thread; all of it waits for the disk.

// A Trash folder and where what it tells of paths begins.
struct TrashPlace {
    QString folder; // ".../Trash", ".../.Trash/1000" or ".../.Trash-1000"
    QString base; // relative places start here: the folder that holds it, the top of its volume
    bool onVolume = false; // it takes care of that volume alone

    // The home folder's, then those that may lie on local volumes; by their names alone.
    static QList<TrashPlace> all();
    // Those of the volumes that these folders lie on, whoever answers for them.
    static QList<TrashPlace> ofVolumesOf(const QStringList &folders);
    static std::optional<TrashPlace> of(const QString &folder); // if it can be one, by its name
    static TrashPlace ofHome();
    static QList<TrashPlace> atTop(const QString &top); // of a volume: the two that it may have

    QString files() const { return folder + QStringLiteral("/files"); }
    QString records() const { return folder + QStringLiteral("/info"); }
};

// A Trash folder held open by descriptors, so that what is done is done in this one.
class TrashFolder final {
public:
    // Nothing when it is not there, `why` is then empty, or when it must not be trusted: a link,
    // another person's, open to everybody.
    static std::optional<TrashFolder> open(const TrashPlace &place, QString *why = nullptr);

    const TrashPlace &place() const { return _place; }
    FileIdentity identity() const { return _identity; }
    int files() const { return _files.number(); }
    bool keepsInodes() const { return _keepsInodes; } // see files/FolderMark
    // The folder beside it for what is on its way out for good, where the desktop has it, too.
    // Closed where there is none.
    enum class IfMissing { Leave, Make };
    Descriptor expunged(IfMissing missing) const;

    struct Record {
        QString origin; // absolute; "" where it tells none that can be meant
        QString broken; // why not, as a sentence for a person
        QDateTime deleted;
    };
    Record record(const QByteArray &name) const;
    void removeRecord(const QByteArray &name) const;

    // The text of a record, for the Trash of a place.
    static Record parsed(const QByteArray &text, const TrashPlace &place);

private:
    TrashPlace _place;
    FileIdentity _identity;
    bool _keepsInodes = true;
    Descriptor _folder;
    Descriptor _files;
    Descriptor _info;
};
