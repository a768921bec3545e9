#include "operations/CopyProgress.h"

#include "base/Localized.h"
#include "settings/SizeText.h"

#include <chrono>
#include <cmath>

using namespace std::chrono_literals;

CopyProgress::CopyProgress(std::function<qint64()> total, std::function<qint64()> done,
                           std::function<void(const QString &)> show)
    : _total(std::move(total))
    , _done(std::move(done))
    , _show(std::move(show))
    , _thread([this] { run(); })
{
}

CopyProgress::~CopyProgress()
{
    {
        const std::lock_guard lock(_mutex);
        _copyEnded = true;
        _ended.notify_all();
    }
    _thread.join();
}

void CopyProgress::run()
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const qint64 total = _total();
    if (!_show)
        return;
    Clock::duration pause = 500ms;
    std::unique_lock lock(_mutex);
    while (!_ended.wait_for(lock, pause, [this] { return _copyEnded; })) {
        lock.unlock();
        const auto asked = Clock::now();
        const qint64 done = _done();
        const auto now = Clock::now();
        const std::chrono::duration<double> seconds = now - start;
        // Of empty files there is nothing to say, nor is what was said of the item before still
        // true.
        if (seconds > 2s)
            _show(total > 0 ? line(done, total, seconds.count()) : QString());
        // Looking at a large tree must not slow its copying down.
        pause = std::max<Clock::duration>(500ms, 10 * (now - asked));
        lock.lock();
    }
}

QString CopyProgress::line(qint64 done, qint64 total, double seconds)
{
    const auto size = [](double bytes) { return SizeText::getCalcFileSizeWithDouble(bytes); };
    const double speed = seconds > 0 ? double(done) / seconds : 0;
    QString text =
        filled(filled(localized("%@ of %@"), size(double(qMin(done, total)))), size(double(total)));
    if (speed < 1)
        return text;
    text += QStringLiteral(", ") + filled(localized("%@ per second"), size(speed));
    const double left = double(qMax<qint64>(total - done, 0)) / speed;
    if (left < 90)
        text += QStringLiteral(", ")
            + filled(localized("about %i second(s) left"), int(std::ceil(left)));
    else
        text += QStringLiteral(", ")
            + filled(localized("about %i minute(s) left"), int(std::lround(left / 60)));
    return text;
}
