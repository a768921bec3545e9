#include "operations/Workers.h"

#include "platform/MainThread.h"
#include "platform/Questions.h"

#include <QEventLoop>
#include <QThread>

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
    QThread *thread = QThread::create(body);
    connect(thread, &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    delete thread;
}

void Workers::drain()
{
    if (!anyRunning())
        return;
    QEventLoop loop;
    connect(this, &Workers::lastEnded, &loop, &QEventLoop::quit);
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
