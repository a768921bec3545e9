#include "base/MainThread.h"

#include <QCoreApplication>
#include <QThread>

bool isMainThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void onMainThread(const std::function<void()> &function)
{
    if (isMainThread())
        function();
    else
        QMetaObject::invokeMethod(QCoreApplication::instance(), function,
                                  Qt::BlockingQueuedConnection);
}
