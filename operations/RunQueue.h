#pragma once

#include "model/RunDisplay.h"

#include <condition_variable>
#include <functional>
#include <mutex>

// Copy and move runs take turns, in the order of their requests: they share two flags and one
// sheet. Any thread.
class RunQueue final {
public:
    using Ticket = unsigned;

    // Called after each change of the runs, on the thread of the change. Set before the first run.
    void setChangeHandler(std::function<void()> handler) { _changeHandler = std::move(handler); }

    Ticket enqueue(const QString &text); // how it is shown
    // Blocks until it is the ticket's turn; false when it was cancelled while it waited.
    bool wait(Ticket ticket);
    // Ends the turn, and with it the cancel that was meant for it.
    void end(Ticket ticket);

    // Asks the run whose turn it is to stop, and no other. Without a run it does nothing.
    void cancel();
    // Ends a wait at once; of the run whose turn it is by now, as cancel().
    void cancel(Ticket ticket);
    void cancelWaiting();
    void cancelAll();
    bool isCancelled() const; // for the run whose turn it is

    // The one whose turn it is, then those that wait.
    QList<ShownRun> runs() const;

private:
    void dropWaiting(); // with the lock
    void changed();

    mutable std::mutex _mutex;
    std::condition_variable _turn;
    std::function<void()> _changeHandler;
    QList<ShownRun> _queue; // the first has the turn once it has come to wait for it
    QList<Ticket> _cancelled; // while they waited
    bool _stopActive = false;
    Ticket _last = 0;
};
