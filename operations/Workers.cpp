#include "operations/Workers.h"

#include "base/Arrivals.h"
#include "base/MainThread.h"
#include "platform/OpenDialogs.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QThread>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.operations", QtInfoMsg)

// Not a QEventLoop: QCoreApplication::exit ends those at once, also one that begins after it, and
// the workers must be served until they have ended.
void serveUntil(const std::function<bool()> &reached)
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    // Called from an event: a worker's call may wait behind that event already, and a dispatcher
    // looks only when something new comes.
    dispatcher->wakeUp();
    while (!reached())
        dispatcher->processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

Workers::Workers(OpenDialogs &questionsOnScreen)
    : openDialogs(questionsOnScreen)
{
    // Queued: the code that asked goes on first, with the rows it asked about.
    connect(
        &openDialogs, &OpenDialogs::allClosed, this,
        [this] { Arrivals::deliver(this, [this] { settleEnded(); }); }, Qt::QueuedConnection);
}

Workers::~Workers()
{
    drain();
    const auto threads = findChildren<QThread *>();
    for (QThread *thread : threads)
        thread->wait();
}

void Workers::setHandlers(Handlers handlers)
{
    _handlers = std::move(handlers);
}

void Workers::detach(Operation operation, const QStringList &places,
                     std::function<void(OperationRecord &)> body)
{
    const quint64 worker = ++_lastWorker;
    _running.insert(worker, places);
    if (_handlers.threadBegins)
        _handlers.threadBegins(operation);
    QThread *thread = QThread::create([this, operation, worker, body = std::move(body)] {
        OperationRecord record { operation };
        body(record);
        onMainThread([this, worker, &record] {
            qCDebug(log) << operationWord(record.operation) << record.item;
            _ended.append({ worker, record });
            settleEnded();
        });
    });
    thread->setParent(this);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

QStringList Workers::places() const
{
    QStringList all;
    for (const QStringList &places : _running)
        all.append(places);
    all.removeDuplicates();
    return all;
}

void Workers::drain()
{
    _abandoned = false;
    serveUntil([this] { return _abandoned || !anyRunning(); });
}

void Workers::settleEnded()
{
    // Nothing is listed again under an open question: the rows it is about stay on the screen.
    while (!_ended.isEmpty() && !openDialogs.anyOpen()) {
        const Ended ended = _ended.takeFirst();
        if (_handlers.threadWillExit)
            _handlers.threadWillExit(ended.record);
        _running.remove(ended.worker);
    }
}
