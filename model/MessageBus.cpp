#include "model/MessageBus.h"

#include <QLoggingCategory>

#include <algorithm>

namespace {
Q_LOGGING_CATEGORY(log, "twinleaf.bus", QtInfoMsg)
}

void MessageBus::add(const char *name, const void *receiver,
                     std::function<void(const void *)> handler)
{
    QList<Subscription> &subscriptions = _subscriptions[QByteArrayView(name)];
    subscriptions.removeIf([&](const Subscription &s) { return s.receiver == receiver; });
    subscriptions.append({ ++_lastNumber, receiver, std::move(handler) });
}

void MessageBus::unsubscribe(const void *receiver)
{
    for (QList<Subscription> &subscriptions : _subscriptions)
        subscriptions.removeIf([&](const Subscription &s) { return s.receiver == receiver; });
}

void MessageBus::deliver(const char *name, const void *payload) const
{
    qCDebug(log, "%s", name);
    // A copy, as handlers may subscribe; and a receiver that a handler before it took away is gone.
    const QList<Subscription> subscriptions = _subscriptions.value(QByteArrayView(name));
    for (const Subscription &subscription : subscriptions) {
        const QList<Subscription> now = _subscriptions.value(QByteArrayView(name));
        if (std::ranges::find(now, subscription.number, &Subscription::number) != now.end())
            subscription.deliver(payload);
    }
}
