#include "base/Arrivals.h"

#include <QCoreApplication>
#include <QList>
#include <QPointer>

namespace {

struct Arrival {
    QPointer<QObject> context;
    std::function<void()> deliver;
};

QList<Arrival> kept;
int holds = 0;
int deliveries = 0; // one within another

void handOver(const std::function<void()> &arrival)
{
    ++deliveries;
    arrival();
    --deliveries;
}

void deliverNext();

void deliverSoon()
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), &deliverNext, Qt::QueuedConnection);
}

void deliverNext()
{
    if (holds > 0 || kept.isEmpty())
        return;
    const Arrival next = kept.takeFirst();
    // Before it is delivered: it may open a question, and those behind it are not about that.
    if (!kept.isEmpty())
        deliverSoon();
    if (next.context)
        handOver(next.deliver);
}

} // namespace

void Arrivals::deliver(QObject *context, std::function<void()> arrival)
{
    if (areHeld())
        kept.append({ context, std::move(arrival) });
    else
        handOver(arrival);
}

bool Arrivals::isDelivering()
{
    return deliveries > 0;
}

void Arrivals::afterWait(QObject *context, std::function<void()> action)
{
    if (holds > 0)
        deliver(context, std::move(action));
    else
        action();
}

bool Arrivals::areHeld()
{
    return holds > 0 || !kept.isEmpty();
}

Arrivals::Hold::Hold()
{
    ++holds;
}

Arrivals::Hold::~Hold()
{
    if (--holds == 0 && !kept.isEmpty())
        deliverSoon();
}
