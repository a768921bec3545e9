#pragma once

#include "files/Descriptor.h"

#include <QList>
#include <QStringList>

#include <memory>

// Notes of work that a crash must not forget: one small file each, on the medium before the work
// begins, locked while the process that wrote it lives. Texts are file names (files/FileName). Any
// thread.
class Journal final {
public:
    explicit Journal(const QString &folder); // made when first needed, with its parents

    // The place for the program's journals: $XDG_STATE_HOME/twinleaf, else ~/.local/state/twinleaf.
    static QString stateFolder();
    static QString runsFolder(); // for the runs that stage what they make

    class Note {
    public:
        // Its end unlocks the file, which stays unless removed.
        const QStringList &fields() const { return _fields; }
        // Outlives the program, not the machine; errno says why not.
        bool append(const QStringList &fields);
        bool appendForGood(const QStringList &fields); // the machine, too
        void remove(); // the work is settled

    private:
        friend class Journal;
        Note(QByteArray file, Descriptor opened, QStringList fields);
        QByteArray _file;
        Descriptor _opened;
        QStringList _fields;
    };

    // Nothing, and why in errno, when the note cannot be written; the work must then not begin.
    std::unique_ptr<Note> write(const QStringList &fields) const;
    // The notes whose writers are gone.
    QList<std::shared_ptr<Note>> abandoned() const;

private:
    QByteArray _folder;
};
