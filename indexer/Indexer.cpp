#include "indexer/Indexer.h"

#include "indexer/Log.h"
#include "indexer/Session.h"
#include "search/IndexFile.h"
#include "search/IndexLock.h"

#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

Indexer::Indexer(ForeignFiles &files, LeftOut leftOut, const Limits &limits)
    : _files(files)
    , _leftOut(std::move(leftOut))
    , _limits(limits)
    , _wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void Indexer::run()
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point last {};
    while (!_stopped) {
        const bool again = work();
        // What comes back at once is not tried all the time.
        const auto time = Clock::now();
        if (!again || time - last < std::chrono::seconds(1))
            pause(_limits.times.retry);
        last = time;
    }
}

bool Indexer::work()
{
    // Not beyond a fault: what is not written to is not told as whole.
    const IndexLock alone;
    if (!alone.isHeld()) {
        qCWarning(indexLog) << "the index cannot be locked:" << std::strerror(alone.error());
        return false;
    }
    const Session::End end =
        Session(_files, _leftOut, _limits, alone, _stopped, _wake.number()).run(idle);
    if (end != Session::End::Damaged)
        return end == Session::End::Replaced;
    qCWarning(indexLog) << "the index is damaged or of another version: it is made anew";
    return IndexFile::remove(IndexFile::path());
}

void Indexer::stop()
{
    _stopped = true;
    ::eventfd_write(_wake.number(), 1);
}

void Indexer::pause(qint64 milliseconds)
{
    pollfd wake { _wake.number(), POLLIN, 0 };
    ::poll(&wake, 1, int(milliseconds));
}
