#include "files/FolderWatch.h"

#include <QLoggingCategory>

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <thread>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.watch", QtInfoMsg)

constexpr qsizetype MostNames = 100'000; // with more, reading the folder is cheaper

} // namespace

FolderWatch::FolderWatch()
    : _stop(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

FolderWatch::~FolderWatch()
{
    // The kernel takes some milliseconds over it, which nobody is to wait for.
    if (_events.isOpen())
        std::thread([queue = _events.release()]() mutable { queue.close(); }).detach();
}

void FolderWatch::begin(int folder)
{
    const auto status = statusOf(folder);
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder);
    if (!status || !_stop.isOpen())
        return;
    _folder = status->identity;
    _watches = _events.isOpen() && _events.add(path.constData()) >= 0;
    if (!_watches)
        qCDebug(log) << "a folder is not watched:" << std::strerror(errno);
}

bool FolderWatch::awaits(bool events, std::chrono::milliseconds time) const
{
    pollfd sources[] = { { _stop.number(), POLLIN, 0 },
                         { events ? _events.descriptor() : -1, POLLIN, 0 } };
    while (::poll(sources, std::size(sources), int(time.count())) < 0 && errno == EINTR) { }
    return !(sources[0].revents & POLLIN);
}

bool FolderWatch::pause(std::chrono::milliseconds time) const
{
    return awaits(false, time);
}

bool FolderWatch::wait(Changes &changes, std::chrono::milliseconds time)
{
    if (!awaits(true, time))
        return false;
    _events.take([&changes](const inotify_event &event) {
        if (event.mask & IN_Q_OVERFLOW)
            changes.lost = true;
        else if (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED))
            changes.away = true;
        else if (event.len == 0)
            changes.itself = true;
        else
            changes.names.insert(event.name);
        changes.items |= event.mask & (IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO);
    });
    if (changes.names.size() > MostNames) {
        changes.names.clear();
        changes.lost = true;
    }
    return true;
}

void FolderWatch::stop()
{
    ::eventfd_write(_stop.number(), 1);
}
