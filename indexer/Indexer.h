#pragma once

#include "files/Descriptor.h"
#include "platform/ForeignFiles.h"

#include <QStringList>

#include <atomic>
#include <functional>

// Keeps the index in line with the home folder until it is told to stop. When the index is damaged,
// gone or of another version it is made anew; when it cannot be written, what is there stays, and
// it is tried again later. While another program does that for the same index, it waits. Runs on
// one thread, which should have nothing else to do.
class Indexer final {
public:
    // Milliseconds.
    struct Times {
        qint64 coalesce = 150; // from a change to its reading, so that several are read at once
        qint64 betweenReadings = 500; // of one folder
        qint64 quiet = 1500; // until what is gone from its place is given up
        qint64 look = 20000; // for an index or home folder that was exchanged, or other rules
        qint64 refresh = 60000; // of what is not watched, at least
        qint64 retry = 60000; // after a fault of the disk
        qint64 late = 600000; // until a file is read again whose reading did not come to an end
    };
    struct Limits {
        Times times {};
        int watches = -1; // -1: what the system gives
    };

    // The folders that are not walked, as WalkRules takes them; asked for now and then, as a person
    // may have changed them. On the thread of run().
    using LeftOut = std::function<QStringList()>;

    Indexer(ForeignFiles &files, LeftOut leftOut, const Limits &limits);

    void run(); // returns after stop()
    void stop(); // any thread

    // All that is known to have changed is written; for tests and figures. On the thread of run().
    std::function<void()> idle = [] {};

private:
    bool work(); // up to the first fault; true: it can go on at once
    void pause(qint64 milliseconds);

    ForeignFiles &_files;
    LeftOut _leftOut;
    Limits _limits;
    std::atomic<bool> _stopped = false;
    Descriptor _wake; // eventfd
};
