#pragma once

#include <QtGlobal>

#include <csignal>
#include <functional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

// Runs some work in a process of its own, and kills that as it is about to make its call number
// `last` to the kernel, so that the moment is the same on every machine. Answers how many it made:
// fewer than `last` when it came to its end.
inline int callsUntilKilled(const std::function<void()> &work, int last)
{
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            qFatal("No process may be traced here");
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    int calls = 0;
    long signal = 0;
    for (bool entering = true; WIFSTOPPED(status);) {
        ptrace(PTRACE_SYSCALL, child, nullptr, signal);
        waitpid(child, &status, 0);
        const bool call = WIFSTOPPED(status) && WSTOPSIG(status) == (SIGTRAP | 0x80);
        signal = WIFSTOPPED(status) && !call ? WSTOPSIG(status) : 0;
        if (call && entering && ++calls == last)
            kill(child, SIGKILL);
        entering = entering != call;
    }
    return calls;
}
