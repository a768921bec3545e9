#include "rights/Surroundings.h"

#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <initializer_list>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// A disk that does not answer while the item is looked for must not keep a process of root's for
// ever.
constexpr unsigned LongestSearch = 60; // seconds

void keepNeededRights()
{
    constexpr unsigned Needed = 1U << CAP_CHOWN | 1U << CAP_FOWNER | 1U << CAP_FSETID
        | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_LINUX_IMMUTABLE | 1U << CAP_KILL;
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    __user_cap_data_struct rights[2] {};
    // By number: the C library has none of the two.
    if (syscall(SYS_capget, &header, rights) != 0)
        std::abort();
    rights[0].effective &= Needed;
    rights[0].permitted &= Needed;
    rights[0].inheritable = 0;
    rights[1] = {};
    if (syscall(SYS_capset, &header, rights) != 0 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        std::abort();
}

} // namespace

void leaveSurroundings()
{
    clearenv();
    umask(077);
    if (chdir("/") != 0)
        std::abort();
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard)
        if (fcntl(standard, F_GETFD) < 0 && open("/dev/null", O_RDWR) != standard)
            std::abort();
    syscall(SYS_close_range, STDERR_FILENO + 1, UINT_MAX, 0);

    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    // A terminal, or a reader of its errors who goes away, does not end it half way.
    for (const int number : { SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP, SIGPIPE })
        std::signal(number, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    constexpr rlimit NoCore { 0, 0 };
    setrlimit(RLIMIT_CORE, &NoCore);
    alarm(LongestSearch);
    keepNeededRights();
}

void leaveNothingHalfDone()
{
    alarm(0);
}
