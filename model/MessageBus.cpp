#include "model/MessageBus.h"

#include <QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(log, "twinleaf.bus", QtInfoMsg)
}

void MessageBus::add(const char *name, const void *receiver,
                     std::function<void(const void *)> handler)
{
    QList<Subscription> &subscriptions = _subscriptions[QByteArrayView(name)];
    subscriptions.removeIf([&](const Subscription &s) { return s.receiver == receiver; });
    subscriptions.append({ receiver, std::move(handler) });
}

void MessageBus::unsubscribe(const void *receiver)
{
    for (QList<Subscription> &subscriptions : _subscriptions)
        subscriptions.removeIf([&](const Subscription &s) { return s.receiver == receiver; });
}

void MessageBus::deliver(const char *name, const void *payload) const
{
    qCDebug(log, "%s", name);
    // A copy: handlers may subscribe.
    const QList<Subscription> subscriptions = _subscriptions.value(QByteArrayView(name));
    for (const Subscription &subscription : subscriptions)
        subscription.deliver(payload);
}
