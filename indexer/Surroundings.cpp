#include "indexer/Surroundings.h"

#include <cerrno>
#include <chrono>
#include <linux/ioprio.h>
#include <malloc.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds TimeToEnd { 500 };
constexpr int LargeBlock = 1024 * 1024; // bytes

} // namespace

void Surroundings::takeLowestPriority()
{
    const sched_param none {};
    ::sched_setscheduler(0, SCHED_IDLE, &none);
    ::setpriority(PRIO_PROCESS, 0, 19);
    ::syscall(SYS_ioprio_set, IOPRIO_WHO_PROCESS, 0, IOPRIO_PRIO_VALUE(IOPRIO_CLASS_IDLE, 0));
}

void Surroundings::raiseFileLimit()
{
    rlimit limit {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

void Surroundings::returnMemory()
{
    ::mallopt(M_MMAP_THRESHOLD, LargeBlock);
    ::mallopt(M_TRIM_THRESHOLD, LargeBlock);
}

void Surroundings::endWithInput(std::function<void()> stop)
{
    std::thread([stop = std::move(stop)] {
        char bytes[256];
        ssize_t filled = 0;
        do
            filled = ::read(STDIN_FILENO, bytes, sizeof bytes);
        while (filled > 0 || (filled < 0 && errno == EINTR));
        stop();
        std::this_thread::sleep_for(TimeToEnd);
        ::_exit(0);
    }).detach();
}
