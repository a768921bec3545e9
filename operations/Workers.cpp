#include "operations/Workers.h"

#include "platform/MainThread.h"
#include "platform/Questions.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <memory>
#include <utility>

Workers::Workers(Questions &questionsOnScreen)
    : questions(questionsOnScreen)
{
    // Queued: the code that asked goes on first, with the rows it asked about.
    connect(&questions, &Questions::allAnswered, this, &Workers::settleEnded, Qt::QueuedConnection);
}

Workers::~Workers()
{
    drain();
    const auto threads = findChildren<QThread *>();
    for (QThread *thread : threads)
        thread->wait();
}

void Workers::setExitHandler(std::function<void(const OperationRecord &)> handler)
{
    _exitHandler = std::move(handler);
}

void Workers::detach(Operation operation, std::function<void(OperationRecord &)> body)
{
    ++_running;
    QThread *thread = QThread::create([this, operation, body = std::move(body)] {
        OperationRecord record { operation };
        body(record);
        onMainThread([this, &record] { handOver(record); });
    });
    thread->setParent(this);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void Workers::runAndWait(const std::function<void()> &body)
{
    QEventLoop loop;
    const std::unique_ptr<QThread> thread(QThread::create(body));
    bool counted = true;
    const auto end = [&] {
        if (std::exchange(counted, false) && --_running == 0)
            Q_EMIT lastEnded();
        loop.quit();
    };
    connect(thread.get(), &QThread::finished, &loop, end);
    ++_running;
    thread->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    // The end of the session can end the loop before the thread, which must still be served.
    while (!thread->wait(10))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    end();
}

void Workers::drain()
{
    if (!anyRunning())
        return;
    QEventLoop loop;
    connect(this, &Workers::lastEnded, &loop, &QEventLoop::quit);
    // Called from an event: a worker's call may wait behind that event already, and a nested loop
    // looks only when something new comes.
    QAbstractEventDispatcher::instance()->wakeUp();
    loop.exec();
}

void Workers::handOver(const OperationRecord &record)
{
    _ended.append(record);
    settleEnded();
}

void Workers::settleEnded()
{
    // Nothing is listed again under an open question: the rows it is about stay on the screen.
    while (!_ended.isEmpty() && !questions.anyOpen()) {
        const OperationRecord record = _ended.takeFirst();
        if (_exitHandler)
            _exitHandler(record);
        if (--_running == 0)
            Q_EMIT lastEnded();
    }
}
