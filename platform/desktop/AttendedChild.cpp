#include "platform/desktop/AttendedChild.h"

#include "platform/desktop/ForkedChild.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
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

[[noreturn]] void become(pid_t parent, int folder, char *const *arguments, int errors)
{
    setpgid(0, 0);
    ForkedChild::setSignals();
    prctl(PR_SET_PDEATHSIG, SIGTERM, 0, 0, 0);
    int failed = fchdir(folder) == 0 ? 0 : errno;
    ForkedChild::setDescriptors(open("/dev/null", O_WRONLY), errors);
    if (failed == 0 && getppid() == parent) {
        execv(arguments[0], arguments);
        failed = errno;
    }
    const char *why = strerrordesc_np(failed);
    if (why && write(STDERR_FILENO, why, strlen(why)) < 0)
        _exit(EXIT_FAILURE);
    _exit(CannotStart);
}

} // namespace

pid_t startAttended(const char *folder, char *const *arguments, int output, int errors)
{
    const pid_t parent = getpid();
    const pid_t child = ForkedChild::make();
    if (child == 0) {
        setpgid(0, 0); // as every program's: a Ctrl+C in the terminal is not for it
        ForkedChild::setSignals();
        ForkedChild::setDescriptors(output, errors);
        attend(parent, folder, arguments);
    }
    if (child > 0)
        setpgid(child, child); // whoever comes first
    return child;
}

pid_t startBound(int folder, char *const *arguments, int errors)
{
    // In our memory until it is another program, so that no handler of ours may run in it: a copy
    // of all our pages for each folder would take longer than to copy that.
    const pid_t parent = getpid();
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = vfork(); // NOLINT(clang-analyzer-security.insecureAPI.vfork)
    if (child == 0)
        become(parent, folder, arguments, errors); // NOLINT(clang-analyzer-unix.Vfork)
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return child;
}
