#include "sheets/terminal/CommandRuns.h"

#include "base/Arrivals.h"
#include "sheets/terminal/OutputText.h"

#include <QMutex>
#include <QSet>
#include <QThread>

#include <csignal>

namespace {

constexpr std::chrono::milliseconds Grace { 200 }; // at the end of the program

} // namespace

struct CommandRuns::Shared {
    QMutex mutex;
    CommandRuns *runs; // null when it is gone
    QSet<pid_t> processes;
    int stops = 0; // so far; what starts just then is to end, too

    // Calls it on the main thread, in the order of what arrives there.
    template <typename Function>
    void deliver(Function function) // worker thread
    {
        const QMutexLocker lock(&mutex);
        if (runs)
            QMetaObject::invokeMethod(
                runs,
                [runs = runs, function] {
                    Arrivals::deliver(runs, [runs, function] { function(*runs); });
                },
                Qt::QueuedConnection);
    }
};

CommandRuns::CommandRuns(Programs &allPrograms)
    : programs(allPrograms)
    , _shared(std::make_shared<Shared>())
{
    _shared->runs = this;
}

CommandRuns::~CommandRuns()
{
    end();
    const QMutexLocker lock(&_shared->mutex);
    _shared->runs = nullptr;
}

void CommandRuns::run(const QString &folder, const QStringList &words)
{
    const auto work = [shared = _shared, &programs = programs, folder, words,
                       stops = _shared->stops] { // worker thread
        pid_t own = 0;
        programs.runCommand(folder, words,
                            { .started =
                                  [&](pid_t process) {
                                      const QMutexLocker lock(&shared->mutex);
                                      own = process;
                                      shared->processes.insert(process);
                                      if (shared->stops > stops)
                                          kill(process, SIGTERM);
                                  },
                              .ended =
                                  [&](CommandEnd end) {
                                      const QString shown =
                                          OutputText::shown(end.output, end.outputIsCut)
                                          + OutputText::ofErrors(end.errors, words.first());
                                      end.output.clear();
                                      shared->deliver([end, shown, words](CommandRuns &runs) {
                                          Q_EMIT runs.ended(words, end, shown);
                                      });
                                  },
                              .gone =
                                  [&] {
                                      const QMutexLocker lock(&shared->mutex);
                                      shared->processes.remove(own);
                                  } });
        shared->deliver([](CommandRuns &runs) { runs.countDown(); });
    };
    QThread *thread = QThread::create(work);
    thread->setParent(this);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    ++_running;
    thread->start();
    Q_EMIT runningChanged();
}

void CommandRuns::countDown()
{
    --_running;
    Q_EMIT runningChanged();
}

void CommandRuns::stop()
{
    const QMutexLocker lock(&_shared->mutex);
    ++_shared->stops;
    for (const pid_t process : std::as_const(_shared->processes))
        kill(process, SIGTERM);
}

bool CommandRuns::end(QDeadlineTimer deadline)
{
    const auto threads = findChildren<QThread *>();
    const auto waitUntil = [&](QDeadlineTimer end) {
        return std::ranges::all_of(threads, [&](QThread *thread) { return thread->wait(end); });
    };
    stop();
    if (waitUntil(QDeadlineTimer(Grace)))
        return true;
    stop();
    if (waitUntil(deadline))
        return true;
    for (QThread *thread : threads)
        if (!thread->isFinished())
            thread->setParent(nullptr); // left behind
    return false;
}
