#pragma once

#include "files/FileStatus.h"
#include "files/FolderEvents.h"

#include <QByteArray>
#include <QSet>

#include <chrono>

// What changes in one folder, as the system tells it. Waited for on a worker thread; stop() and the
// questions that are const may come from any.
class FolderWatch final {
public:
    FolderWatch();
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    // Watches the open folder, once. Nothing falls between what is read of it afterwards and what
    // is told here. Where the system watches no more folders it tells nothing.
    void begin(int folder);
    bool isWatching() const { return _watches; }
    const FileIdentity &folder() const { return _folder; }

    struct Changes {
        QSet<QByteArray> names; // of items
        bool itself = false; // the folder's own status
        bool items = false; // some came or went, not just had something written to them
        bool lost = false; // there was more than could be told
        bool away = false; // the folder was moved, removed or unmounted

        bool isEmpty() const { return names.isEmpty() && !itself && !lost && !away; }
    };
    // Adds what came since, waiting until there is something or the time is over; a negative one
    // never is. False when it was stopped.
    bool wait(Changes &changes, std::chrono::milliseconds time);
    bool pause(std::chrono::milliseconds time) const; // false when it was stopped
    void stop();

private:
    bool awaits(bool events, std::chrono::milliseconds time) const;

    FolderEvents _events;
    Descriptor _stop; // readable for good when it was stopped
    FileIdentity _folder;
    bool _watches = false;
};
