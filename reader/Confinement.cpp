#include "reader/Confinement.h"

#include "platform/ReaderWords.h"
#include "reader/CallFilter.h"
#include "reader/FileBytes.h"
#include "reader/PathFilter.h"

#include <algorithm>
#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace {

constexpr rlim_t Megabyte = 1 << 20;
constexpr rlim_t OwnMemory = 768 * Megabyte; // a picture of 48 megapixels, twice
constexpr rlim_t Libraries = 1024 * Megabyte; // their code, and stacks that are never filled
constexpr rlim_t ProcessorSeconds = 20; // for a file
// For all files of a process, which are some thousand: whoever lifts the limit for one does not
// lift this.
constexpr rlim_t LifeSeconds = 4 * 3600;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool MemoryCanBeLimited = false;
#elif defined(__has_feature)
constexpr bool MemoryCanBeLimited = !__has_feature(address_sanitizer);
#else
constexpr bool MemoryCanBeLimited = true;
#endif

void limit(int resource, rlim_t value)
{
    const rlimit both { value, value };
    setrlimit(__rlimit_resource_t(resource), &both);
}

} // namespace

void Confinement::setLimits()
{
    std::signal(SIGXFSZ, SIG_IGN); // writing fails, and that is all
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_NOFILE, Descriptors);
    limit(RLIMIT_CPU, LifeSeconds);
    limit(RLIMIT_MEMLOCK, 0);
    limit(RLIMIT_MSGQUEUE, 0);
    if (MemoryCanBeLimited) {
        limit(RLIMIT_DATA, OwnMemory);
        limit(RLIMIT_AS,
              OwnMemory + Libraries + rlim_t(ReaderWords::MemorySize)
                  + rlim_t(FileBytes::MapLimit));
    }
}

quint32 Confinement::closeDoors()
{
    quint32 closed = 0;
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (closePaths())
        closed |= ReaderWords::PathsClosed;
    if (closeSystemCalls(closed & ReaderWords::PathsClosed ? Paths::ReadOnly : Paths::Refused))
        closed |= ReaderWords::CallsClosed;
    else
        limit(RLIMIT_NPROC, 0); // costs the pictures whose decoders start threads
    return closed;
}

void Confinement::startProcessorLimit()
{
    rusage used {};
    rlimit limits {};
    getrusage(RUSAGE_SELF, &used);
    getrlimit(RLIMIT_CPU, &limits);
    limits.rlim_cur =
        std::min(rlim_t(used.ru_utime.tv_sec + used.ru_stime.tv_sec) + 1 + ProcessorSeconds,
                 limits.rlim_max);
    setrlimit(RLIMIT_CPU, &limits);
}
