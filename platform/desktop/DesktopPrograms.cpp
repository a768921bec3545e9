#include "platform/desktop/DesktopPrograms.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "platform/desktop/AttendedChild.h"
#include "platform/desktop/ProgramWords.h"
#include "platform/ProgramBeside.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype errorTextLimit = 4096; // bytes
constexpr qsizetype longestLine = 65536; // bytes

int spawn(pid_t &process, char *const *arguments, int errorPipe)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);

    // The pipe first: its number may be one of those that the next lines replace.
    posix_spawn_file_actions_adddup2(&actions, errorPipe, STDERR_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    // A group of its own, so that a Ctrl+C in the terminal that started us cannot cut a copy short.
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setpgroup(&attributes, 0);
    sigset_t signalSet;
    sigemptyset(&signalSet);
    posix_spawnattr_setsigmask(&attributes, &signalSet);
    sigfillset(&signalSet);
    posix_spawnattr_setsigdefault(&attributes, &signalSet);

    // By PATH only where the name holds no "/".
    const int error =
        posix_spawnp(&process, arguments[0], &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

// What a child writes to a pipe, as far as it has been read.
class Stream {
public:
    Stream() = default;
    ~Stream() = default;
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    bool open()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reading = Descriptor(ends[0]);
        writing = Descriptor(ends[1]);
        return true;
    }
    // Hands on what is there now; false at the end.
    template <typename Take>
    bool read(const Take &take)
    {
        char buffer[errorTextLimit];
        const ssize_t count = ::read(reading.number(), buffer, sizeof buffer);
        if (count < 0)
            return errno == EINTR || errno == EAGAIN;
        take(QByteArrayView(buffer, count));
        return count > 0;
    }

    Descriptor reading;
    Descriptor writing; // the child's
};

// Cuts what comes into lines; one too long to be of use comes in parts.
class Lines {
public:
    explicit Lines(const std::function<void(const QByteArray &)> &take)
        : _take(take)
    {
    }
    void add(QByteArrayView bytes)
    {
        _rest.append(bytes);
        qsizetype start = 0;
        for (qsizetype end = 0; (end = _rest.indexOf('\n', start)) >= 0; start = end + 1)
            _take(_rest.mid(start, end - start));
        _rest.remove(0, start);
        if (_rest.size() > longestLine)
            end();
    }
    void end()
    {
        if (!_rest.isEmpty())
            _take(std::exchange(_rest, {}));
    }

private:
    const std::function<void(const QByteArray &)> &_take;
    QByteArray _rest;
};

// Collects the error text until the child ends. The child's end counts, not the stream's: something
// the child left behind may hold the stream open for as long as it likes.
QByteArray errorText(Stream &errors, Stream *output, Lines *lines, pid_t process)
{
    QByteArray text;
    // What is past the limit is thrown away, so that a talkative child never waits for us.
    const auto takeError = [&text](QByteArrayView bytes) {
        text.append(bytes.first(qMin(bytes.size(), errorTextLimit - text.size())));
    };
    const auto takeOutput = [lines](QByteArrayView bytes) { lines->add(bytes); };
    // By number: the C library's header for it is not made for C++.
    const Descriptor end(int(syscall(SYS_pidfd_open, process, 0)));
    pollfd watched[] = { { errors.reading.number(), POLLIN, 0 },
                         { output ? output->reading.number() : -1, POLLIN, 0 },
                         { end.number(), POLLIN, 0 } };
    for (;;) {
        if (poll(watched, 3, -1) < 0) {
            if (errno == EINTR)
                continue;
            return text;
        }
        if (watched[0].revents && !errors.read(takeError))
            watched[0].fd = -1;
        if (watched[1].revents && !output->read(takeOutput))
            watched[1].fd = -1;
        if (watched[2].revents && !watched[0].revents && !watched[1].revents)
            return text;
        if (watched[0].fd < 0 && watched[1].fd < 0)
            return text;
    }
}

int waitForEnd(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            return EXIT_FAILURE;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// The program that carries a request out on this machine. The unpacking program is our own: it lies
// beside the program, else where programs lie.
QByteArray programOf(const QByteArray &path)
{
    return path == "/usr/bin/ditto" ? programBeside("twinleaf-ditto") : path;
}

ProgramWords vectorOf(const QStringList &arguments)
{
    QList<QByteArray> words;
    for (const QString &argument : arguments)
        words.append(FileName::toBytes(argument));
    if (!words.isEmpty())
        words.first() = programOf(words.first());
    return ProgramWords(std::move(words));
}

ProgramEnd notStarted(int error)
{
    return { .started = false, .errorText = QString::fromLocal8Bit(strerror(error)) };
}

// One of ours may be gone, or be replaced just now: its name tells more than the reason.
ProgramEnd notStarted(int error, const char *program)
{
    ProgramEnd end = notStarted(error);
    end.errorText = FileName::fromBytes(program) + u": "_s + end.errorText;
    return end;
}

ProgramEnd endOf(pid_t process, Stream &errors, const std::function<void(pid_t)> &started)
{
    errors.writing.close();
    if (started)
        started(process);
    const QByteArray text = errorText(errors, nullptr, nullptr, process);
    return { .status = waitForEnd(process), .errorText = FileName::fromBytes(text.trimmed()) };
}

} // namespace

ProgramEnd DesktopPrograms::run(const QStringList &arguments,
                                const std::function<void(pid_t)> &started)
{
    Stream errors;
    if (arguments.isEmpty() || !errors.open())
        return notStarted(errno);
    const ProgramWords vector = vectorOf(arguments);
    pid_t process = 0;
    if (const int error = spawn(process, vector.data(), errors.writing.number()))
        return notStarted(error, *vector.data());
    return endOf(process, errors, started);
}

ProgramEnd DesktopPrograms::runAt(int folder, const QStringList &arguments,
                                  const std::function<void(pid_t)> &started)
{
    Stream errors;
    if (arguments.isEmpty() || !errors.open())
        return notStarted(errno);
    const ProgramWords vector = vectorOf(arguments);
    const pid_t process = startBound(folder, vector.data(), errors.writing.number());
    if (process < 0)
        return notStarted(errno);
    return endOf(process, errors, started);
}

ProgramEnd DesktopPrograms::runIn(const QString &folder, const QStringList &arguments,
                                  const ProgramAttention &attention)
{
    Stream errors;
    Stream output;
    if (arguments.isEmpty() || !errors.open() || !output.open())
        return notStarted(errno);
    const ProgramWords vector = vectorOf(arguments);
    const pid_t process = startAttended(FileName::toBytes(folder), vector.data(),
                                        output.writing.number(), errors.writing.number());
    if (process < 0)
        return notStarted(errno);
    errors.writing.close();
    output.writing.close();
    if (attention.started)
        attention.started(process);
    const std::function<void(const QByteArray &)> nobody = [](const QByteArray &) {};
    Lines lines(attention.line ? attention.line : nobody);
    const QByteArray text = errorText(errors, &output, &lines, process);
    lines.end();
    return { .status = waitForEnd(process), .errorText = FileName::fromBytes(text.trimmed()) };
}

ProgramEnd DesktopPrograms::runShell(const QString &commandLine, const ProgramAttention &attention)
{
    return runIn({}, { u"/bin/sh"_s, u"-c"_s, commandLine }, attention);
}
