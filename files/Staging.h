#pragma once

#include "files/Descriptor.h"
#include "files/FileStatus.h"
#include "files/Journal.h"

#include <QByteArray>

#include <functional>
#include <system_error>

// What an entry of a staging folder is, as its name says it: a role, a number and the name that
// the item has or is to have.
struct StagedName {
    enum Role : char {
        Making = 'm', // not whole yet
        Ready = 'i', // the number is the inode of the new item: any other one is what it replaced
        Old = 'o', // set aside, where a file system cannot exchange two names
        Unpacking = 'u', // a folder: what has come out of the archive of that name so far
        Removing = 'r', // the folder that is to go for good, if it has the inode of the number
        Trash = 't', // a folder in which it goes to the Trash under its own name
    };

    Role role = Making;
    quint64 number = 0;
    QByteArray name; // cut where it would not fit

    QByteArray text() const;
    static std::optional<StagedName> fromText(const QByteArray &text);
};

// Whether somebody who knows paths alone, such as the Trash, has taken an item.
using TakePath = std::function<bool(const QString &path)>;

// Has it take an entry of a folder under its own name, by way of an open staging folder, whose path
// is given too. The entry stays where it is when that does not take it. Any thread.
bool handOut(int staging, const QString &path, int from, const QByteArray &entry,
             const QByteArray &name, const TakePath &take);

// The hidden folder of one run beside its targets, which nobody else can enter: what is on its way
// to a name, or from it. Made when first needed, after a note in the journal, so that the next
// start finds what a crash left in it. Used by one worker.
class Staging final {
public:
    // `folder` stays open as long as this lives.
    Staging(int folder, QString path, const Journal &journal);
    ~Staging(); // goes, with its note, when nothing is left in it
    Staging(const Staging &) = delete;
    Staging &operator=(const Staging &) = delete;

    // Whether it is there now.
    std::error_code open();
    int descriptor() const { return _opened.number(); }
    // A path that stays right for this process, whatever happens to its name; and the named one,
    // for the Trash.
    QString heldPath() const;
    QString path() const;

    // As handOut() below, of an entry of this one.
    bool handOut(const QByteArray &entry, const QByteArray &name, const TakePath &take);

    quint64 nextNumber() { return ++_last; }
    // The text of an entry's name. Where that cuts the item's name, the note has the whole one.
    QByteArray entry(const StagedName &staged);
    // Adds to the note what the next start must know of an item that stands elsewhere.
    std::error_code note(const QStringList &fields);
    // Why no note can be written, where open() or note() failed for that.
    const std::error_code &noNote() const { return _noNote; }

private:
    bool removeFolder() const;

    int _folder;
    QString _folderPath;
    const Journal &journal;
    QByteArray _name;
    Descriptor _opened;
    std::unique_ptr<Journal::Note> _note;
    std::error_code _noNote;
    quint64 _last = 0;
};

// A new plain file, written under no name where the file system has that, else in the staging
// folder. Gone when it was given no other name. Used by one worker.
class StagedFile final {
public:
    StagedFile(int folder, Staging &staging);
    ~StagedFile();
    StagedFile(const StagedFile &) = delete;
    StagedFile &operator=(const StagedFile &) = delete;

    std::error_code make(); // mode 0600
    int descriptor() const { return _file.number(); }

    // Gives it a name that must be free.
    std::error_code takeName(int folder, const QByteArray &name);

private:
    int _folder;
    Staging &staging;
    Descriptor _file;
    QByteArray _name; // in the staging folder; empty without one
};
