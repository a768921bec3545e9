#include "rights/Actions.h"

#include "rights/SeenItem.h"
#include "rights/Surroundings.h"

#include <csignal>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr mode_t SetIdBits = S_ISUID | S_ISGID;
constexpr mode_t AllBits = 07777; // that a mode can be given

bool setOwner(const SeenItem &seen, uid_t owner, gid_t group)
{
    return fchownat(seen.item.number(), "", owner, group, AT_EMPTY_PATH) == 0;
}

// A program that runs as its owner keeps doing so under the new one. Whoever wrote it would be that
// account with the next call of it, and the person was not told. No account of the system may be
// had in this way: from many of them, "shadow" or "disk" say, it is one step to root. What is
// root's already only root wrote.
bool makesProgramOfSystem(const ChangeOwner &change, const struct stat &status)
{
    constexpr unsigned FirstPerson = 1000;
    const auto comesTo = [](unsigned before, unsigned after) {
        return after != before && after < FirstPerson;
    };
    if (!S_ISREG(status.st_mode) || status.st_uid == 0)
        return false;
    return ((status.st_mode & S_ISUID) && comesTo(status.st_uid, change.owner))
        || ((status.st_mode & S_ISGID) && comesTo(status.st_gid, change.group));
}

// The kernel takes them with the owner. They come back only on what is as it was seen but for them:
// what somebody gave the item meanwhile is not given to it again by root.
bool onlySetIdTaken(const struct stat &before, const struct stat &after)
{
    const mode_t changed = before.st_mode ^ after.st_mode;
    return (changed & ~SetIdBits) == 0 && (changed & after.st_mode) == 0;
}

Outcome act(const ChangeOwner &change)
{
    auto found = takeItem(change.item);
    if (auto *outcome = std::get_if<Outcome>(&found))
        return *outcome;
    const SeenItem &seen = std::get<SeenItem>(found);
    const struct stat &before = seen.status;
    if (makesProgramOfSystem(change, before))
        return { Status::Refused, "a set-id program would become the system's" };
    leaveNothingHalfDone();
    if (!setOwner(seen, change.owner, change.group))
        return failure("the owner stays");

    struct stat after;
    if (fstat(seen.item.number(), &after) != 0)
        return failure("the item is gone");
    if (after.st_mode == before.st_mode
        || (onlySetIdTaken(before, after)
            && chmod(pathOf(seen).c_str(), before.st_mode & AllBits) == 0))
        return {};
    return { Status::Failed,
             setOwner(seen, before.st_uid, before.st_gid)
                 ? "the set-id bits could not stay: the owner is as before"
                 : "the set-id bits could not stay" };
}

Outcome act(const SetImmutable &change)
{
    auto found = takeItem(change.item);
    if (auto *outcome = std::get_if<Outcome>(&found))
        return *outcome;
    const SeenItem &seen = std::get<SeenItem>(found);
    // Opening anything else may set something going.
    if (!S_ISREG(seen.status.st_mode) && !S_ISDIR(seen.status.st_mode))
        return { Status::Refused, "neither file nor folder" };
    const Descriptor opened(
        open(pathOf(seen).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    int flags = 0;
    if (!opened.isOpen() || ioctl(opened.number(), FS_IOC_GETFLAGS, &flags) != 0)
        return failure("no flags");
    const int wanted = change.immutable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    leaveNothingHalfDone();
    if (wanted != flags && ioctl(opened.number(), FS_IOC_SETFLAGS, &wanted) != 0)
        return failure("the flag stays");
    return {};
}

Outcome act(const EndProcess &end)
{
    // By number: the C library's header for these calls is not made for C++.
    const Descriptor process(int(syscall(SYS_pidfd_open, end.process, 0)));
    if (!process.isOpen())
        return failure("the process stays");
    // What was meant had the number before and has it still, so it is the one that is held.
    if (startOfProcess(end.process) != end.start)
        return { Status::Refused, "another process has come to the number" };
    if (syscall(SYS_pidfd_send_signal, process.number(), SIGTERM, nullptr, 0) != 0)
        return failure("the process stays");
    return {};
}

} // namespace

Outcome perform(const Request &request)
{
    return std::visit([](const auto &what) { return act(what); }, request);
}
