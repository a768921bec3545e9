#include "platform/desktop/AttendedChild.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

// A shell starts the packing program as its own child, which a signal to the shell alone, or the
// end of ours, would leave running. Everything here runs between fork and exec in a process with
// threads: only calls that are safe there.

namespace {

constexpr int CannotStart = 127; // as the shell's

volatile std::sig_atomic_t asked = 0;

void endGroup(int)
{
    if (asked == 0) {
        asked = 1;
        kill(0, SIGTERM); // which comes back once
    }
}

void setSignals()
{
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        sigaction(number, &standard, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void setDescriptors(int output, int errors)
{
    // Out of the way first: they may be among the three that are replaced.
    const int out = fcntl(output, F_DUPFD, 3);
    const int err = fcntl(errors, F_DUPFD, 3);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    close(STDIN_FILENO);
    open("/dev/null", O_RDONLY);
    // What we hold open would stay open, and what we lock stay locked. By number: not every C
    // library has the call.
    syscall(SYS_close_range, STDERR_FILENO + 1, UINT_MAX, 0);
}

// Answers the status of the program when nothing that it has started is left.
int waitForAll(pid_t program)
{
    int result = EXIT_FAILURE;
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(-1, &status, 0);
        if (ended == program)
            result = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
        else if (ended < 0 && errno != EINTR)
            return result;
    }
}

[[noreturn]] void attend(pid_t parent, const char *folder, char *const *arguments)
{
    struct sigaction action = {};
    action.sa_handler = endGroup;
    sigaction(SIGTERM, &action, nullptr);
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM, 0, 0, 0);
    // Without a group of its own, the signal would be for the whole program.
    if (getppid() != parent || getpgrp() != getpid())
        _exit(EXIT_FAILURE);
    const pid_t program = fork();
    if (program == 0) {
        signal(SIGTERM, SIG_DFL);
        if (asked == 0 && (!*folder || chdir(folder) == 0))
            execv(arguments[0], arguments);
        _exit(CannotStart);
    }
    _exit(waitForAll(program));
}

} // namespace

pid_t startAttended(const char *folder, char *const *arguments, int output, int errors)
{
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0); // as every program's: a Ctrl+C in the terminal is not for it
        setSignals();
        setDescriptors(output, errors);
        attend(parent, folder, arguments);
    }
    if (child > 0)
        setpgid(child, child); // whoever comes first
    return child;
}
