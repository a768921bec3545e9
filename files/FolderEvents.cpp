#include "files/FolderEvents.h"

#include <sys/inotify.h>

namespace {

constexpr uint32_t Changed = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE
    | IN_MODIFY | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
// A deleted file that is still written to is no change of its folder.
constexpr uint32_t How = IN_ONLYDIR | IN_EXCL_UNLINK;

} // namespace

FolderEvents::FolderEvents()
    : _queue(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
}

int FolderEvents::add(const char *folder)
{
    return ::inotify_add_watch(descriptor(), folder, Changed | How);
}

void FolderEvents::remove(int watch)
{
    ::inotify_rm_watch(descriptor(), watch);
}

void FolderEvents::take(const std::function<void(const inotify_event &event)> &visit) const
{
    alignas(inotify_event) char buffer[64 * 1024];
    for (;;) {
        const ssize_t filled = ::read(descriptor(), buffer, sizeof buffer);
        if (filled <= 0)
            return;
        for (ssize_t at = 0; at < filled;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            at += ssize_t(sizeof *event) + event->len;
            visit(*event);
        }
    }
}
