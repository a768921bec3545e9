#include "platform/desktop/CommandChild.h"

#include "platform/desktop/ForkedChild.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// Everything here runs between fork and exec in a process with threads, or in the one that stays
// between them: only calls that are safe there.

namespace {

constexpr int CannotStart = 127; // as the shell's
constexpr unsigned Grace = 1; // seconds between asking and killing
constexpr int Report = 3;

volatile std::sig_atomic_t ending = 0; // the signal that all of them get; 0: none
volatile pid_t program = 0; // leader of a group; 0: it has ended, and its number is anybody's

void tell(int error, bool isOfFolder, int status)
{
    const CommandReport report { error, isOfFolder, status };
    [[maybe_unused]] const ssize_t written = write(Report, &report, sizeof report);
}

// The group of the program, and what has come to us because its parent has ended.
void signalAll(int number)
{
    if (program > 0)
        kill(-program, number);
    const int children = open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
    char text[4096];
    pid_t child = 0;
    for (ssize_t length = 0; (length = read(children, text, sizeof text)) > 0;) {
        for (ssize_t i = 0; i < length; ++i) {
            if (text[i] >= '0' && text[i] <= '9') {
                child = child * 10 + (text[i] - '0');
            } else if (child > 0) {
                kill(child, number);
                child = 0;
            }
        }
    }
    if (children >= 0)
        close(children);
}

void endAll(int number)
{
    const int before = errno;
    ending = number == SIGALRM || ending != 0 ? SIGKILL : SIGTERM;
    signalAll(ending);
    alarm(Grace);
    errno = before;
}

[[noreturn]] void become(const char *folder, char *const *words, char *const *environment,
                         const sigset_t &mask)
{
    setpgid(0, 0);
    signal(SIGTERM, SIG_DFL);
    signal(SIGALRM, SIG_DFL);
    signal(SIGPIPE, SIG_DFL);
    prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    sigprocmask(SIG_SETMASK, &mask, nullptr);
    const bool isThere = chdir(folder) == 0;
    if (isThere)
        execvpe(words[0], words, environment);
    tell(errno, !isThere, CannotStart);
    _exit(CannotStart);
}

[[noreturn]] void attend(pid_t parent, const char *folder, char *const *words,
                         char *const *environment)
{
    // Until it is known what they are for.
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    sigaddset(&held, SIGTERM);
    sigaddset(&held, SIGALRM);
    sigprocmask(SIG_BLOCK, &held, &before);
    struct sigaction action = {};
    action.sa_handler = endAll;
    action.sa_mask = held;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGALRM, &action, nullptr);
    signal(SIGPIPE, SIG_IGN); // who is not there any more needs no report
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM, 0, 0, 0);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    program = fork();
    if (program == 0)
        become(folder, words, environment, before);
    if (program < 0) {
        tell(errno, false, CannotStart);
        _exit(CannotStart);
    }
    setpgid(program, program); // whoever comes first
    sigprocmask(SIG_SETMASK, &before, nullptr);
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(-1, &status, 0);
        if (ended < 0 && errno != EINTR)
            _exit(EXIT_SUCCESS);
        if (ended > 0 && ended == program) {
            program = 0;
            tell(0, false, WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
        }
        // What had that one for its parent is ours now.
        if (ended > 0 && ending != 0)
            signalAll(ending);
    }
}

} // namespace

pid_t startCommand(const char *folder, char *const *words, char *const *environment, int output,
                   int errors, int report)
{
    const pid_t parent = getpid();
    const pid_t child = ForkedChild::make();
    if (child == 0) {
        setsid();
        ForkedChild::setSignals();
        ForkedChild::setDescriptors(output, errors, report);
        attend(parent, folder, words, environment);
    }
    return child;
}
