#include "pictures/DecodingTurn.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds LongestTurn { 5 };

// As long as the process, as threads may come back at its end.
struct Turns {
    std::mutex mutex; // for all below
    std::condition_variable ended;
    unsigned last = 0;
    unsigned current = 0; // 0: nobody's
    Clock::time_point since;
};

Turns &turns()
{
    static auto *const all = new Turns;
    return *all;
}

} // namespace

DecodingTurn::DecodingTurn(bool isLarge)
{
    if (!isLarge)
        return;
    Turns &all = turns();
    std::unique_lock lock(all.mutex);
    while (all.current != 0 && Clock::now() < all.since + LongestTurn)
        all.ended.wait_until(lock, all.since + LongestTurn);
    _number = ++all.last;
    all.current = _number;
    all.since = Clock::now();
}

DecodingTurn::~DecodingTurn()
{
    if (_number == 0)
        return;
    Turns &all = turns();
    const std::lock_guard lock(all.mutex);
    if (all.current != _number)
        return; // it has been taken away
    all.current = 0;
    all.ended.notify_one();
}
