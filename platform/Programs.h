#pragma once

#include <QStringList>

#include <functional>

#include <sys/types.h>

// How a child process ended.
struct ProgramEnd {
    bool started = true; // false: the program could not be started at all
    int status = 0; // exit status, or 128 + the signal that killed it
    QString errorText {}; // the first lines the program wrote to its standard error
    bool succeeded() const { return started && status == 0; }
    // As wait(2) has it; what the shell answers for a program that it cannot start.
    int waitStatus() const
    {
        if (!started)
            return 127 << 8;
        return status > 128 ? status - 128 : status << 8;
    }
};

// Runs the external programs that carry out copy, move, link, packing and unpacking. Any thread.
class Programs {
public:
    virtual ~Programs() = default;

    // Runs a program with an argument vector (first element: its absolute path), never through a
    // shell, in a process group of its own with standard input closed, and waits for its end.
    // `started` is called with the process id once it runs.
    virtual ProgramEnd run(const QStringList &arguments,
                           const std::function<void(pid_t)> &started = {}) = 0;
    // The same in a folder, which need not be the program's own.
    virtual ProgramEnd runIn(const QString &folder, const QStringList &arguments) = 0;

    // Has the standard shell run a command line, as system(3) does, and answers what that answers:
    // the status as wait(2) has it.
    virtual int runShell(const QString &commandLine) = 0;
};
