#include "search/SearchState.h"

#include <QMutexLocker>

void SearchState::setReceiver(QObject *receiver, std::function<void()> arrived)
{
    const QMutexLocker lock(&_mutex);
    _receiver = receiver;
    _arrived = std::move(arrived);
}

void SearchState::stop()
{
    const QMutexLocker lock(&_mutex);
    _receiver = nullptr;
    _arrived = {};
    _stopped = true;
    _changed.wakeAll();
}

void SearchState::setShown(bool shown)
{
    const QMutexLocker lock(&_mutex);
    _shown = shown;
    _changed.wakeAll();
}

SearchState::News SearchState::take(FoundItems::Snapshot shown)
{
    const QMutexLocker lock(&_mutex);
    _returned.push_back(std::move(shown));
    _underWay = false;
    return std::exchange(_news, {});
}

void SearchState::publish(FoundItems::Snapshot found, Event event)
{
    const QMutexLocker lock(&_mutex);
    std::swap(_news.found, found); // what is not taken goes on this thread, after the lock
    _news.finished = _news.finished || event == Event::Finish;
    _news.updated = _news.updated || event == Event::Update;
    if (_underWay || !_receiver)
        return;
    _underWay = true;
    QMetaObject::invokeMethod(_receiver, _arrived, Qt::QueuedConnection);
}

bool SearchState::wait(std::chrono::milliseconds time)
{
    std::vector<FoundItems::Snapshot> returned; // freed after the lock
    QMutexLocker lock(&_mutex);
    returned.swap(_returned);
    if (!_stopped && _shown)
        _changed.wait(&_mutex, QDeadlineTimer(time));
    while (!_stopped && !_shown)
        _changed.wait(&_mutex);
    return !_stopped;
}
