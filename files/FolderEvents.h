#pragma once

#include "files/Descriptor.h"

#include <cstdint>
#include <functional>

struct inotify_event;

// The queue in which the system tells what changes in folders (inotify(7)). A watch holds to the
// folder itself, whatever its path becomes. One thread at a time.
class FolderEvents final {
public:
    FolderEvents(); // not open where there are no more queues; errno tells why

    bool isOpen() const { return _queue.isOpen(); }
    int descriptor() const { return _queue.number(); } // readable when something has come
    // The number of the watch, or -1 and errno.
    int add(const char *folder);
    void remove(int watch);
    // Shows what came since, without waiting. IN_Q_OVERFLOW: there was more than the queue holds.
    void take(const std::function<void(const inotify_event &event)> &visit) const;

    // Gives the queue up: who closes it waits for the system.
    Descriptor release() { return std::move(_queue); }

private:
    Descriptor _queue;
};
