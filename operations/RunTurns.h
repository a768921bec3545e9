#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>

// Copy and move runs take turns, in the order of their requests: they share two flags and one
// sheet. Any thread.
class RunTurns final {
public:
    using Ticket = unsigned;

    Ticket enqueue();
    // Blocks until it is the ticket's turn; false when it was cancelled while it waited.
    bool wait(Ticket ticket);
    void end(Ticket ticket);
    // Ends every wait at once.
    void cancelWaiting();
    bool anyActive() const;

private:
    mutable std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<Ticket> _queue; // the front has the turn once it has come to wait for it
    std::deque<Ticket> _cancelled;
    Ticket _last = 0;
};
