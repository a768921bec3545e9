#include "platform/desktop/ForkedChild.h"

#include <climits>
#include <csignal>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

pid_t ForkedChild::make()
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = fork();
    if (child != 0)
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return child;
}

void ForkedChild::setSignals()
{
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        sigaction(number, &standard, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void ForkedChild::setDescriptors(int output, int errors, int kept)
{
    constexpr int Kept = STDERR_FILENO + 1;
    // Out of the way first: they may be among those that are replaced.
    const int out = fcntl(output, F_DUPFD, Kept + 1);
    const int err = fcntl(errors, F_DUPFD, Kept + 1);
    if (kept >= 0)
        kept = fcntl(kept, F_DUPFD, Kept + 1);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    close(STDIN_FILENO);
    open("/dev/null", O_RDONLY);
    if (kept >= 0)
        dup3(kept, Kept, O_CLOEXEC);
    // What we hold open would stay open, and what we lock stay locked. By number: not every C
    // library has the call.
    syscall(SYS_close_range, kept >= 0 ? Kept + 1 : Kept, UINT_MAX, 0);
}
