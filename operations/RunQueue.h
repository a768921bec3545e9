#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>

// Copy and move runs take turns, in the order of their requests: they share two flags and one
// sheet. Any thread.
class RunQueue final {
public:
    using Ticket = unsigned;

    Ticket enqueue();
    // Blocks until it is the ticket's turn; false when it was cancelled while it waited.
    bool wait(Ticket ticket);
    // Ends the turn, and with it the cancel that was meant for it.
    void end(Ticket ticket);

    // Asks the run whose turn it is to stop; asked again, ends the waits of all others at once.
    // Without a run it does nothing.
    void cancel();
    void cancelAll();
    bool isCancelled() const; // for the run whose turn it is

private:
    void cancelWaiting();

    mutable std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<Ticket> _queue; // the front has the turn once it has come to wait for it
    std::deque<Ticket> _cancelled; // while they waited
    bool _stopActive = false;
    Ticket _last = 0;
};
