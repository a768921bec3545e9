#include "base/MainThread.h"

#include "base/Arrivals.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>

#include <memory>

bool isMainThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void onMainThread(const std::function<void()> &function)
{
    if (isMainThread()) {
        function();
        return;
    }
    QSemaphore ended;
    {
        // Released with the last copy of the call, so also when nobody is left to run it.
        const std::shared_ptr<void> release(nullptr, [&ended](void *) { ended.release(); });
        QObject *application = QCoreApplication::instance();
        QMetaObject::invokeMethod(
            application,
            [application, &function, release] {
                Arrivals::deliver(application, [&function, release] { function(); });
            },
            Qt::QueuedConnection);
    }
    ended.acquire();
}
