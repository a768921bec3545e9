#include "operations/RunQueue.h"

RunQueue::Ticket RunQueue::enqueue(const QString &text)
{
    Ticket ticket;
    {
        const std::lock_guard lock(_mutex);
        ticket = ++_last;
        _queue.append({ ticket, text });
    }
    changed();
    return ticket;
}

bool RunQueue::wait(Ticket ticket)
{
    std::unique_lock lock(_mutex);
    _turn.wait(lock, [&] {
        return _cancelled.contains(ticket)
            || (!_queue.isEmpty() && _queue.first().ticket == ticket);
    });
    return !_cancelled.removeOne(ticket);
}

void RunQueue::end(Ticket ticket)
{
    {
        // One step with the clearing: a late cancel must not reach the next run.
        const std::lock_guard lock(_mutex);
        _queue.removeIf([&](const ShownRun &run) { return run.ticket == ticket; });
        _stopActive = false;
    }
    changed();
}

void RunQueue::cancel()
{
    const std::lock_guard lock(_mutex);
    _stopActive = !_queue.isEmpty();
}

void RunQueue::cancel(Ticket ticket)
{
    {
        const std::lock_guard lock(_mutex);
        if (!_queue.isEmpty() && _queue.first().ticket == ticket)
            _stopActive = true;
        else if (_queue.removeIf([&](const ShownRun &run) { return run.ticket == ticket; }) > 0)
            _cancelled.append(ticket);
    }
    changed();
}

void RunQueue::cancelWaiting()
{
    {
        const std::lock_guard lock(_mutex);
        dropWaiting();
    }
    changed();
}

void RunQueue::cancelAll()
{
    {
        // One step: else a run that ends in between gives its turn to the next.
        const std::lock_guard lock(_mutex);
        _stopActive = !_queue.isEmpty();
        dropWaiting();
    }
    changed();
}

void RunQueue::dropWaiting()
{
    while (_queue.size() > 1)
        _cancelled.append(_queue.takeLast().ticket);
}

bool RunQueue::isCancelled() const
{
    const std::lock_guard lock(_mutex);
    return _stopActive;
}

QList<ShownRun> RunQueue::runs() const
{
    const std::lock_guard lock(_mutex);
    return _queue;
}

void RunQueue::changed()
{
    _turn.notify_all();
    if (_changeHandler)
        _changeHandler();
}
