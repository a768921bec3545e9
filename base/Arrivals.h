#pragma once

#include <functional>

class QObject;

// What comes to the main thread by itself while that waits for the disk: input, the ends of
// workers, mounts, drops, answers of other programs. It is kept, and delivered in its order, one by
// one, when whoever waited has gone on. Main thread.
namespace Arrivals {

// Calls the function, at once or when its turn has come; not when the context is gone by then.
void deliver(QObject *context, std::function<void()> arrival);

// Whether an arrival would have to wait: for the end of a wait, or for those before it.
bool areHeld();

// Whether an arrival is being delivered: what is done now nobody is waiting for.
bool isDelivering();

// Calls the function at once, but not in the middle of a wait: for what a person can do past the
// held input, by a screen reader.
void afterWait(QObject *context, std::function<void()> action);

// Lives while the main thread waits.
class Hold {
public:
    Hold();
    ~Hold();
    Hold(const Hold &) = delete;
    Hold &operator=(const Hold &) = delete;
};

} // namespace Arrivals
