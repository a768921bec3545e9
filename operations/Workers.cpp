#include "operations/Workers.h"

#include "base/Arrivals.h"
#include "base/MainThread.h"
#include "platform/OpenDialogs.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QThread>

#include <memory>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.operations")

// Not a QEventLoop: QCoreApplication::exit ends those at once, also one that begins after it, and
// the workers must be served until they have ended.
void serveUntil(const std::function<bool()> &reached, QEventLoop::ProcessEventsFlags events)
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    // Called from an event: a worker's call may wait behind that event already, and a dispatcher
    // looks only when something new comes.
    dispatcher->wakeUp();
    while (!reached())
        dispatcher->processEvents(events | QEventLoop::WaitForMoreEvents);
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

void Workers::detach(Operation operation, std::function<void(OperationRecord &)> body)
{
    ++_running;
    if (_handlers.threadBegins)
        _handlers.threadBegins(operation);
    QThread *thread = QThread::create([this, operation, body = std::move(body)] {
        OperationRecord record { operation };
        body(record);
        onMainThread([this, &record] {
            qCDebug(log) << operationWord(record.operation) << record.item;
            _ended.append(record);
            settleEnded();
        });
    });
    thread->setParent(this);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void Workers::runAndWait(const std::function<void()> &body)
{
    bool ended = false;
    const std::unique_ptr<QThread> thread(QThread::create(body));
    // Counted down by the event: a drain may be what handles it.
    connect(thread.get(), &QThread::finished, this, [this, &ended] {
        ended = true;
        --_running;
    });
    ++_running;
    thread->start();
    serveUntil([&ended] { return ended; }, QEventLoop::ExcludeUserInputEvents);
    thread->wait();
}

void Workers::drain()
{
    _abandoned = false;
    serveUntil([this] { return _abandoned || !anyRunning(); }, QEventLoop::AllEvents);
}

void Workers::settleEnded()
{
    // Nothing is listed again under an open question: the rows it is about stay on the screen.
    while (!_ended.isEmpty() && !openDialogs.anyOpen()) {
        const OperationRecord record = _ended.takeFirst();
        if (_handlers.threadWillExit)
            _handlers.threadWillExit(record);
        --_running;
    }
}
