#pragma once

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include <sys/types.h>

// Accompanies the copy of one large item on a second thread: sums up what there is to copy, notes
// which files carry extended attributes (the copy command drops them), and tells every half second
// how far the copy is. Used by the worker that runs the copy.
class CopyProgress final {
public:
    // `show` gets the line to show, on the monitor's own thread.
    CopyProgress(QString source, std::function<void(const QString &)> show);
    ~CopyProgress();

    void childStarted(pid_t process) { _process = process; }
    // Ends the telling, finishes the walk, and answers the items with attributes, relative to the
    // source ("" for the source itself).
    QStringList finish();

    // "1.2 GB of 3.4 GB, 85 MB per second, about 27 seconds left".
    static QString line(qint64 done, qint64 total, double seconds);

private:
    void run();

    QString _source;
    std::function<void(const QString &)> _show;
    QStringList _withAttributes;
    qint64 _total = 0;
    std::atomic<pid_t> _process { 0 }; // set by the worker, read by the monitor
    std::mutex _mutex;
    std::condition_variable _ended;
    bool _childEnded = false;
    std::thread _thread; // last: it uses all of the above
};
