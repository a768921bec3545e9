#include "pictures/PictureWorkers.h"

#include "base/Arrivals.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

using Clock = std::chrono::steady_clock;

namespace {

constexpr int MostLeftBehind = 8; // then whoever wants more has to wait for one of them
constexpr std::chrono::milliseconds BetweenLooks { 100 };
constexpr std::chrono::milliseconds Grace { 300 }; // for what nobody waits for any more

} // namespace

// What the main thread shares with the others, which may outlive everything else.
struct PictureWorkers::Shared : std::enable_shared_from_this<Shared> {
    struct UnderWay {
        Job job;
        Clock::time_point since;
        bool isWanted = true; // still
        bool isLeft = false; // its thread does not count any more
    };

    std::mutex mutex; // for all below
    std::condition_variable change;
    PictureWorkers *receiver = nullptr;
    std::deque<Job> waiting;
    std::vector<std::shared_ptr<UnderWay>> underWay;
    int threads = 0; // without those that are left
    bool isEnding = false;

    void start() // under the mutex
    {
        ++threads;
        std::thread([shared = shared_from_this()] { shared->work(); }).detach();
    }

    void work() // worker thread
    {
        std::unique_lock lock(mutex);
        while (true) {
            change.wait(lock, [this] { return isEnding || !waiting.empty(); });
            if (isEnding)
                break;
            const auto own =
                std::make_shared<UnderWay>(UnderWay { std::move(waiting.front()), Clock::now() });
            waiting.pop_front();
            underWay.push_back(own);
            lock.unlock();
            std::function<void()> then = own->job.work();
            lock.lock();
            std::erase(underWay, own);
            deliver(std::move(then));
            if (own->isLeft) {
                change.notify_all();
                return;
            }
        }
        --threads;
        change.notify_all();
    }

    void deliver(std::function<void()> then) // under the mutex
    {
        if (receiver)
            QMetaObject::invokeMethod(
                receiver, [to = receiver, then = std::move(then)] { Arrivals::deliver(to, then); },
                Qt::QueuedConnection);
    }
};

PictureWorkers::PictureWorkers(int threads, std::chrono::milliseconds patience)
    : _shared(std::make_shared<Shared>())
    , _threads(threads)
    , _patience(patience)
{
    _shared->receiver = this;
    _looks.setInterval(std::min(_patience, BetweenLooks));
    _looks.callOnTimeout(this, [this] { Arrivals::deliver(this, [this] { giveUpSlow(); }); });
}

PictureWorkers::~PictureWorkers()
{
    end(QDeadlineTimer(0));
}

void PictureWorkers::want(std::vector<Job> jobs)
{
    const std::lock_guard lock(_shared->mutex);
    if (_shared->isEnding)
        return;
    for (const auto &each : _shared->underWay)
        each->isWanted =
            std::erase_if(jobs, [&](const Job &job) { return job.key == each->job.key; }) > 0;
    _shared->waiting.assign(std::make_move_iterator(jobs.begin()),
                            std::make_move_iterator(jobs.end()));
    if (_shared->waiting.empty())
        return;
    while (_shared->threads < _threads)
        _shared->start();
    _shared->change.notify_all();
    _looks.start();
}

void PictureWorkers::giveUpSlow()
{
    std::vector<std::function<void()>> givenUp;
    {
        const std::lock_guard lock(_shared->mutex);
        const auto left =
            std::ranges::count_if(_shared->underWay, [](const auto &each) { return each->isLeft; });
        auto canLeave = MostLeftBehind - left;
        for (const auto &each : _shared->underWay) {
            const auto patience = each->isWanted ? _patience : std::min(_patience, Grace);
            if (each->isLeft || Clock::now() < each->since + patience || canLeave-- <= 0)
                continue;
            each->isLeft = true;
            --_shared->threads;
            _shared->start();
            if (each->isWanted)
                givenUp.push_back(each->job.givenUp);
        }
        if (_shared->waiting.empty() && _shared->underWay.empty())
            _looks.stop();
    }
    for (const auto &tell : givenUp)
        tell();
}

bool PictureWorkers::end(QDeadlineTimer deadline)
{
    std::unique_lock lock(_shared->mutex);
    _shared->receiver = nullptr;
    _shared->isEnding = true;
    _shared->waiting.clear();
    _shared->change.notify_all();
    const auto isDone = [this] { return _shared->threads == 0 && _shared->underWay.empty(); };
    if (!deadline.isForever())
        return _shared->change.wait_for(lock, std::chrono::milliseconds(deadline.remainingTime()),
                                        isDone);
    _shared->change.wait(lock, isDone);
    return true;
}
