#include "operations/RunQueue.h"

#include <algorithm>

RunQueue::Ticket RunQueue::enqueue()
{
    const std::lock_guard lock(_mutex);
    _queue.push_back(++_last);
    return _last;
}

bool RunQueue::wait(Ticket ticket)
{
    std::unique_lock lock(_mutex);
    const auto cancelled = [&] { return std::ranges::find(_cancelled, ticket); };
    _changed.wait(lock, [&] {
        return cancelled() != _cancelled.end() || (!_queue.empty() && _queue.front() == ticket);
    });
    const auto found = cancelled();
    if (found == _cancelled.end())
        return true;
    _cancelled.erase(found);
    return false;
}

void RunQueue::end(Ticket ticket)
{
    // One step with the clearing: a late cancel must not reach the next run.
    const std::lock_guard lock(_mutex);
    std::erase(_queue, ticket);
    _stopActive = false;
    _changed.notify_all();
}

void RunQueue::cancel()
{
    const std::lock_guard lock(_mutex);
    if (_stopActive)
        cancelWaiting();
    _stopActive = !_queue.empty();
}

void RunQueue::cancelAll()
{
    const std::lock_guard lock(_mutex);
    _stopActive = !_queue.empty();
    cancelWaiting();
}

bool RunQueue::isCancelled() const
{
    const std::lock_guard lock(_mutex);
    return _stopActive;
}

void RunQueue::cancelWaiting()
{
    while (_queue.size() > 1) {
        _cancelled.push_back(_queue.back());
        _queue.pop_back();
    }
    _changed.notify_all();
}
