#pragma once

#include <QString>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

// Accompanies the copy of one large item on a second thread and tells every half second how far it
// is. Used by the worker that runs the copy.
class CopyProgress final {
public:
    // All three are called on a thread of their own: `total` once, `done` and `show` until this
    // ends, if there is a `show`. In bytes.
    CopyProgress(std::function<qint64()> total, std::function<qint64()> done,
                 std::function<void(const QString &)> show);
    ~CopyProgress(); // waits for the thread

    // "1.2 GB of 3.4 GB, 85 MB per second, about 27 seconds left".
    static QString line(qint64 done, qint64 total, double seconds);

private:
    void run();

    std::function<qint64()> _total;
    std::function<qint64()> _done;
    std::function<void(const QString &)> _show;
    std::mutex _mutex;
    std::condition_variable _ended;
    bool _copyEnded = false; // under _mutex
    std::thread _thread; // last: it uses all of the above
};
