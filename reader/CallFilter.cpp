#include "reader/CallFilter.h"

#include "platform/ReaderWords.h"
#include "reader/Confinement.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr int Plain[] = {
    // what is open
    SCMP_SYS(read),
    SCMP_SYS(pread64),
    SCMP_SYS(readv),
    SCMP_SYS(preadv),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(lseek),
    SCMP_SYS(_llseek),
    SCMP_SYS(fstat),
    SCMP_SYS(fstat64),
    SCMP_SYS(newfstatat), // fstat() of the C library; tells of a path no more than that it is there
    SCMP_SYS(fstatat64),
    SCMP_SYS(statx),
    SCMP_SYS(fstatfs),
    SCMP_SYS(fadvise64),
    SCMP_SYS(recvmsg),
    SCMP_SYS(sendto),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    // memory
    SCMP_SYS(brk),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(madvise),
    // threads, which decoders of pictures start
    SCMP_SYS(futex),
    SCMP_SYS(eventfd2), // the toolkit's threads, which scale large pictures, cannot do without
    SCMP_SYS(set_robust_list),
    SCMP_SYS(rseq),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler),
    SCMP_SYS(membarrier),
    SCMP_SYS(gettid),
    SCMP_SYS(getpid),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall),
    // time and the machine
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getrusage),
    SCMP_SYS(times),
    SCMP_SYS(getrandom),
    SCMP_SYS(getcpu),
    SCMP_SYS(sysinfo),
    SCMP_SYS(uname),
    SCMP_SYS(getuid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getegid),
#if defined(__SANITIZE_ADDRESS__)
    SCMP_SYS(pipe), // by which the sanitizers see whether memory can be read
    SCMP_SYS(pipe2),
#endif
};

class Filter {
public:
    Filter()
        : _context(seccomp_init(SCMP_ACT_ERRNO(EPERM)), &seccomp_release)
    {
    }
    // A call that this processor does not have needs no rule.
    template <typename... Arguments>
    void allow(int call, Arguments... arguments)
    {
        seccomp_rule_add(_context.get(), SCMP_ACT_ALLOW, call, sizeof...(arguments), arguments...);
    }
    void refuse(int call, int error)
    {
        seccomp_rule_add(_context.get(), SCMP_ACT_ERRNO(error), call, 0);
    }
    bool load()
    {
        return _context && seccomp_attr_set(_context.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0
            && seccomp_load(_context.get()) == 0;
    }

private:
    std::unique_ptr<void, decltype(&seccomp_release)> _context;
};

void allowReading(Filter &filter)
{
    constexpr unsigned Changing = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
    filter.allow(SCMP_SYS(open), SCMP_A1(SCMP_CMP_MASKED_EQ, Changing, O_RDONLY));
    filter.allow(SCMP_SYS(openat), SCMP_A2(SCMP_CMP_MASKED_EQ, Changing, O_RDONLY));
    for (const int call : { SCMP_SYS(access), SCMP_SYS(faccessat), SCMP_SYS(faccessat2),
                            SCMP_SYS(stat), SCMP_SYS(lstat), SCMP_SYS(readlink),
                            SCMP_SYS(readlinkat), SCMP_SYS(getdents64), SCMP_SYS(statfs) })
        filter.allow(call);
}

} // namespace

bool closeSystemCalls(Paths paths)
{
    Filter filter;
    for (const int call : Plain)
        filter.allow(call);
    // No memory becomes code.
    filter.allow(SCMP_SYS(mmap), SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0));
    filter.allow(SCMP_SYS(mprotect), SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0));
    // Threads, but no processes. The newer call cannot be looked into; the C library then takes
    // the older one.
    filter.allow(SCMP_SYS(clone), SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD));
    filter.refuse(SCMP_SYS(clone3), ENOSYS);
    // What goes wrong ends this process, and no other one.
    filter.allow(SCMP_SYS(tgkill), SCMP_A0(SCMP_CMP_EQ, scmp_datum_t(getpid())));
    filter.allow(SCMP_SYS(prlimit64), SCMP_A0(SCMP_CMP_EQ, 0));
    // Not F_SETOWN, by which the kernel sends signals to others.
    for (const int command : { F_GETFD, F_SETFD, F_GETFL, F_DUPFD_CLOEXEC })
        filter.allow(SCMP_SYS(fcntl), SCMP_A1(SCMP_CMP_EQ, scmp_datum_t(command)));
    // What is open may be closed, but not the pipe by which this process ends with the one that
    // asks: a number that differs from it in one bit at least. Only these bits count for the
    // kernel.
    for (int bit = 1; bit < Confinement::Descriptors; bit *= 2)
        filter.allow(SCMP_SYS(close),
                     SCMP_A0(SCMP_CMP_MASKED_EQ, scmp_datum_t(bit),
                             scmp_datum_t(~ReaderWords::LifeNumber & bit)));
    if (paths == Paths::ReadOnly)
        allowReading(filter);
    return filter.load();
}
