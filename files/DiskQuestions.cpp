#include "files/DiskQuestions.h"

#include "base/Arrivals.h"
#include "files/MountTable.h"

#include <QHash>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

namespace {

std::atomic<int> underWay { 0 };

} // namespace

// What the main thread shares with the threads that ask, which may outlive everything else.
struct DiskQuestions::Shared : std::enable_shared_from_this<Shared> {
    struct Asked {
        QString path;
        Question question;
    };
    // By mount point; "" for the local disks, and for what nobody knows the mount of yet. A lane
    // that is there has a thread.
    using Lanes = QHash<QString, std::deque<Asked>>;

    void enqueue(const QString &lane, Asked asked)
    {
        const std::lock_guard lock(_mutex);
        const bool isNew = !_lanes.contains(lane);
        _lanes[lane].push_back(std::move(asked));
        if (!isNew)
            return;
        ++underWay;
        std::thread([shared = shared_from_this(), lane]() mutable { // worker thread
            shared->work(lane);
            shared.reset();
            --underWay;
        })
            .detach();
    }

    void forgetReceiver()
    {
        const std::lock_guard lock(_mutex);
        _receiver = nullptr;
        for (std::deque<Asked> &lane : _lanes)
            lane.clear();
    }

    explicit Shared(DiskQuestions &receiver)
        : _receiver(&receiver)
    {
    }

private:
    void work(const QString &lane) // worker thread
    {
        while (auto asked = next(lane)) {
            if (const QString mount = lane.isEmpty() ? slowMount(asked->path) : QString();
                !mount.isEmpty()) {
                enqueue(mount, std::move(*asked));
                continue;
            }
            deliver(asked->question());
        }
    }

    static QString slowMount(const QString &path)
    {
        const MountTable table = MountTable::current();
        const Mount *mount = table.slowMountOnTheWay(path);
        return mount ? mount->point : QString();
    }

    std::optional<Asked> next(const QString &lane)
    {
        const std::lock_guard lock(_mutex);
        std::deque<Asked> &waiting = _lanes[lane];
        if (waiting.empty()) {
            _lanes.remove(lane);
            return std::nullopt;
        }
        Asked first = std::move(waiting.front());
        waiting.pop_front();
        return first;
    }

    void deliver(std::function<void()> done)
    {
        const std::lock_guard lock(_mutex);
        if (_receiver)
            QMetaObject::invokeMethod(
                _receiver,
                [receiver = _receiver, done = std::move(done)] {
                    Arrivals::deliver(receiver, done);
                },
                Qt::QueuedConnection);
    }

    std::mutex _mutex; // for all below
    Lanes _lanes;
    DiskQuestions *_receiver;
};

DiskQuestions::DiskQuestions(QObject *parent)
    : QObject(parent)
    , _shared(std::make_shared<Shared>(*this))
{
}

DiskQuestions::~DiskQuestions()
{
    _shared->forgetReceiver();
}

void DiskQuestions::enqueue(const QString &path, Question question)
{
    _shared->enqueue({}, { path, std::move(question) });
}

bool DiskQuestions::anyUnderWay()
{
    return underWay > 0;
}
