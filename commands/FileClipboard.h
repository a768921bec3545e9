#pragma once

#include "files/ClippedFiles.h"
#include "views/DropDecision.h"

#include <QDeadlineTimer>
#include <QObject>

#include <optional>

class CutItems;
class Waiting;
class Workspace;

// The clipboard as it holds files, of this program or of any other. Main thread.
class FileClipboard final : public QObject {
    Q_OBJECT

public:
    FileClipboard(CutItems &cutItems, Waiting &waiting, const Workspace &workspace);

    void put(const QStringList &paths, ClippedFiles::Intent intent);
    // A line each, as bytes: a name that is not UTF-8 is pasted as it stands on the disk.
    static void putText(const QStringList &lines);

    struct Held {
        QList<DroppedItems> folders {}; // the files by their folders
        QStringList others {}; // addresses that are no file of this machine
        ClippedFiles::Intent intent = ClippedFiles::Intent::Copy;
        unsigned version = 0; // of what the clipboard holds; never 0
    };
    // Asks the program that holds the clipboard, once. Nothing when it does not answer.
    std::optional<Held> held();

    // What was cut is being moved, by so many runs, and nobody is to take it again. It is held
    // until the last of them has ended, and after that when nothing has moved.
    void take(unsigned version, qsizetype runs);
    bool isTaken(unsigned version) const { return _taken.runs > 0 && _taken.version == version; }
    void runEnded(unsigned version, bool anyMoved);

private:
    struct Taken {
        unsigned version = 0;
        qsizetype runs = 0; // that have not ended
        bool anyMoved = false;
    };
    void changed();
    std::nullopt_t silent();

    CutItems &cutItems;
    Waiting &waiting;
    const Workspace &workspace;
    const QObject *_marked = nullptr; // what the cut items are marked for; only compared
    unsigned _version = 1;
    Taken _taken;
    QDeadlineTimer _silence { 0 }; // of whoever holds it: as long it is not asked again
};
