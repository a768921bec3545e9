#pragma once

#include "model/Side.h"

#include <QByteArrayView>
#include <QHash>
#include <QList>

#include <functional>

// A message of the program: its name on the bus and, by type, its payload.
template <class Payload>
struct Message {
    const char *name;
};

// A message that exists once for each pane.
template <class Payload>
struct SidedMessage {
    Message<Payload> left;
    Message<Payload> right;
    constexpr const Message<Payload> &operator[](Side side) const
    {
        return side == Side::Left ? left : right;
    }
};

// For messages that carry nothing.
struct NoPayload { };

// The program's own messages: a post is delivered before it returns, to every receiver of that
// name, in the order in which they subscribed. Main thread only. Each post is printed by the log
// category "twinleaf.bus".
class MessageBus final {
public:
    // A second subscription of the same receiver to the same name takes the place of the first and
    // moves to the end, as if it had been removed and added. Handlers may subscribe, unsubscribe
    // and post: who is added during a delivery gets the next message, who is removed gets no more.
    template <class Payload, class Receiver>
    void subscribe(const Message<Payload> &message, Receiver *receiver,
                   void (Receiver::*handler)(const Payload &))
    {
        add(message.name, receiver, [receiver, handler](const void *payload) {
            (receiver->*handler)(*static_cast<const Payload *>(payload));
        });
    }

    // Left and right of a message in one handler, which is told the side.
    template <class Payload, class Receiver>
    void subscribe(const SidedMessage<Payload> &message, Receiver *receiver,
                   void (Receiver::*handler)(Side, const Payload &))
    {
        for (const Side side : { Side::Left, Side::Right })
            add(message[side].name, receiver, [receiver, handler, side](const void *payload) {
                (receiver->*handler)(side, *static_cast<const Payload *>(payload));
            });
    }

    template <class Payload>
    void post(const Message<Payload> &message, const Payload &payload = {}) const
    {
        deliver(message.name, &payload);
    }

    void unsubscribe(const void *receiver); // from every name

private:
    struct Subscription {
        quint64 number; // no other ever has it
        const void *receiver;
        std::function<void(const void *)> deliver;
    };
    void add(const char *name, const void *receiver, std::function<void(const void *)> handler);
    void deliver(const char *name, const void *payload) const;

    QHash<QByteArrayView, QList<Subscription>> _subscriptions;
    quint64 _lastNumber = 0;
};
