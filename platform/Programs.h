#pragma once

#include <QByteArray>
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

// What is told of a program while it runs, on the caller's thread.
struct ProgramAttention {
    std::function<void(pid_t)> started {};
    std::function<void(const QByteArray &line)> line {}; // of its standard output
};

// A command line of the internal terminal, when its program has ended.
struct CommandEnd {
    int error = 0; // errno where it could not be started; ENOENT: there is no such program
    int status = 0; // as ProgramEnd has it
    QByteArray output {}; // the beginning of its standard output
    bool outputIsCut = false; // there was more
    QByteArray errors {}; // the beginning of its standard error, or why it could not be started
};

// What is told of a command line while it runs, on the caller's thread.
struct CommandAttention {
    std::function<void(pid_t)> started {};
    // What the program started and left behind may still run.
    std::function<void(const CommandEnd &)> ended {};
    std::function<void()> gone {}; // the process id: from now on it may be another's
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
    // The same in an open folder, whatever its name is by now; for a program that writes there
    // alone: it ends when this program ends, however that ends.
    virtual ProgramEnd runAt(int folder, const QStringList &arguments,
                             const std::function<void(pid_t)> &started = {}) = 0;
    // The two that pack: the same in a folder, which need not be the program's own; and a command
    // line for the standard shell, as system(3) runs it. Their programs end, with all that they
    // have started, when the process id that was told gets SIGTERM, and when this program ends,
    // however that ends.
    virtual ProgramEnd runIn(const QString &folder, const QStringList &arguments,
                             const ProgramAttention &attention = {}) = 0;
    virtual ProgramEnd runShell(const QString &commandLine,
                                const ProgramAttention &attention = {}) = 0;
    // A command line of the internal terminal: its first word is a program's name, looked up in
    // PATH, or a path, from the folder on. Its standard input is at its end. Returns when nothing
    // that it started is left. When the process id that was told gets SIGTERM all of it is asked to
    // end, and what has not done so within a second, or at the next SIGTERM, is made to. So it is
    // when this program ends, however that ends.
    virtual void runCommand(const QString &folder, const QStringList &words,
                            const CommandAttention &attention) = 0;
};
