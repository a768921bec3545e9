#include "platform/desktop/DesktopPrograms.h"

#include "files/FileName.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype errorTextLimit = 4096; // bytes

// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number = -1)
        : _number(number)
    {
    }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return _number; }
    void close()
    {
        if (_number >= 0)
            ::close(_number);
        _number = -1;
    }

private:
    int _number;
};

int spawn(pid_t &process, const QByteArray &folder, char *const *arguments, int errorPipe)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);

    // The pipe first: its number may be one of those that the next lines replace.
    posix_spawn_file_actions_adddup2(&actions, errorPipe, STDERR_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    if (!folder.isEmpty())
        posix_spawn_file_actions_addchdir_np(&actions, folder.constData());

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

// Reads what is there now; false at the end of the stream. What is past the limit is thrown away,
// so that a talkative child never waits for us.
bool readSome(int pipe, QByteArray &text)
{
    char buffer[errorTextLimit];
    const ssize_t count = read(pipe, buffer, sizeof buffer);
    if (count < 0)
        return errno == EINTR || errno == EAGAIN;
    text.append(buffer, qMin<qsizetype>(count, errorTextLimit - text.size()));
    return count > 0;
}

// Collects the error text until the child ends. The child's end counts, not the stream's: something
// the child left behind may hold the stream open for as long as it likes.
QByteArray errorText(int pipe, pid_t process)
{
    QByteArray text;
    // By number: the C library's header for it is not made for C++.
    const Descriptor end(int(syscall(SYS_pidfd_open, process, 0)));
    pollfd watched[] = { { pipe, POLLIN, 0 }, { end.number(), POLLIN, 0 } };
    for (;;) {
        if (poll(watched, 2, -1) < 0) {
            if (errno == EINTR)
                continue;
            return text;
        }
        if (watched[0].revents && !readSome(pipe, text))
            return text;
        if (watched[1].revents && !watched[0].revents)
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
    if (path != "/usr/bin/ditto")
        return path;
    const QByteArray own("twinleaf-ditto");
    char self[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self);
    const QByteArray folder = QByteArray(self, std::max<ssize_t>(length, 0));
    const QByteArray beside = folder.left(folder.lastIndexOf('/') + 1) + own;
    return access(beside.constData(), X_OK) == 0 ? beside : own;
}

ProgramEnd runProgram(const QString &folder, const QStringList &arguments,
                      const std::function<void(pid_t)> &started)
{
    QList<QByteArray> bytes;
    QVarLengthArray<char *, 8> vector;
    for (const QString &argument : arguments)
        bytes.append(FileName::toBytes(argument));
    if (!bytes.isEmpty())
        bytes.first() = programOf(bytes.first());
    for (QByteArray &argument : bytes)
        vector.append(argument.data());
    vector.append(nullptr);

    int ends[2];
    if (arguments.isEmpty() || pipe2(ends, O_CLOEXEC) != 0)
        return { .started = false, .errorText = QString::fromLocal8Bit(strerror(errno)) };
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);

    pid_t process = 0;
    if (const int error =
            spawn(process, FileName::toBytes(folder), vector.data(), writing.number()))
        return { .started = false, .errorText = QString::fromLocal8Bit(strerror(error)) };
    writing.close();
    if (started)
        started(process);
    const QByteArray text = errorText(reading.number(), process);
    return { .status = waitForEnd(process), .errorText = FileName::fromBytes(text.trimmed()) };
}

} // namespace

ProgramEnd DesktopPrograms::run(const QStringList &arguments,
                                const std::function<void(pid_t)> &started)
{
    return runProgram({}, arguments, started);
}

ProgramEnd DesktopPrograms::runIn(const QString &folder, const QStringList &arguments)
{
    return runProgram(folder, arguments, {});
}

int DesktopPrograms::runShell(const QString &commandLine)
{
    // Not by system(3) itself: what the command prints is nothing for our own standard output, and
    // a Ctrl+C in the terminal that started us is not for it.
    return run({ u"/bin/sh"_s, u"-c"_s, commandLine }, {}).waitStatus();
}
