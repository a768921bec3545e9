#include "files/Readings.h"

#include "base/Arrivals.h"

#include <QThread>

Readings::~Readings()
{
    end();
}

void Readings::run(std::function<void()> read, std::function<void()> take)
{
    QThread *thread = QThread::create(std::move(read));
    thread->setParent(this);
    ++_underWay;
    connect(thread, &QThread::finished, this,
            [this, thread, take = std::move(take), wanted = _wanted] {
                thread->deleteLater();
                const auto hand = [this, take, wanted] {
                    if (!*wanted)
                        return;
                    --_underWay;
                    take();
                };
                if (_delivery == Delivery::AtOnce)
                    hand();
                else if (*wanted)
                    Arrivals::deliver(this, hand);
            });
    thread->start();
}

void Readings::drop()
{
    *_wanted = false;
    _wanted = std::make_shared<bool>(true);
    _underWay = 0;
}

bool Readings::anyWanted() const
{
    return _underWay > 0;
}

bool Readings::end(QDeadlineTimer deadline)
{
    drop();
    bool ended = true;
    const auto threads = findChildren<QThread *>();
    for (QThread *thread : threads) {
        if (thread->wait(deadline))
            continue;
        thread->setParent(nullptr); // left behind
        ended = false;
    }
    return ended;
}
