#pragma once

#include "search/FoundItems.h"

#include <QMutex>
#include <QObject>
#include <QWaitCondition>

#include <atomic>
#include <chrono>

// What a query in the window and the thread that answers it share; whoever is last takes it away.
class SearchState final {
public:
    // What has happened since it was taken last.
    struct News {
        FoundItems::Snapshot found;
        bool finished = false;
        bool updated = false;
    };

    // Main thread. `arrived` is called on it, in the receiver's life and before stop().
    void setReceiver(QObject *receiver, std::function<void()> arrived);
    void stop(); // does not wait
    void setShown(bool shown);
    // `shown`: what was taken before. The thread that searches frees it: it may be the last of
    // much.
    News take(FoundItems::Snapshot shown);

    // The thread that searches.
    enum class Event { Progress, Finish, Update };
    void publish(FoundItems::Snapshot found, Event event);
    // Sleeps; as long as nobody looks, until somebody does. False when it was stopped.
    bool wait(std::chrono::milliseconds time);

    const std::atomic<bool> &stopped() const { return _stopped; }

private:
    std::atomic<bool> _stopped { false }; // set by the main thread, read by any
    QMutex _mutex;
    QWaitCondition _changed;
    // Behind the mutex.
    bool _shown = true;
    QObject *_receiver = nullptr;
    std::function<void()> _arrived;
    bool _underWay = false; // `arrived` will be called
    News _news;
    std::vector<FoundItems::Snapshot> _returned;
};
