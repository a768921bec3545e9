#include "search/IndexerProcess.h"

#include "platform/ProgramBeside.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(indexerLog, "twinleaf.search.indexer", QtWarningMsg)

namespace {

constexpr auto FirstPause = 2s;
constexpr auto LongestPause = 10min;
constexpr auto GoodRun = 10min; // after that, one end is none too many
constexpr int Patience = 1000; // milliseconds, at the end of the program

// Answers an error or 0.
int spawn(QByteArray program, int input, pid_t &process)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    // A Ctrl+C in the terminal that started us is ours; it learns of our end.
    ::posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes, &signals);
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    char *arguments[] = { program.data(), nullptr };
    const int error = ::posix_spawnp(&process, program, &actions, &attributes, arguments, environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return error;
}

} // namespace

IndexerProcess::IndexerProcess()
    : IndexerProcess(programBeside("twinleaf-index"), FirstPause)
{
}

IndexerProcess::IndexerProcess(QByteArray program, std::chrono::milliseconds firstPause)
    : _program(std::move(program))
    , _firstPause(firstPause)
    , _pause(firstPause)
{
    _again.setSingleShot(true);
    connect(&_again, &QTimer::timeout, this, &IndexerProcess::launch);
}

IndexerProcess::~IndexerProcess()
{
    if (_process < 0)
        return;
    _input.close();
    // It may stand at a disk that is gone, and its file bears any end.
    pollfd end { _end.number(), POLLIN, 0 };
    if (::poll(&end, 1, Patience) <= 0)
        ::kill(_process, SIGKILL);
    ::poll(&end, 1, Patience);
    ::waitpid(_process, nullptr, WNOHANG);
}

void IndexerProcess::start()
{
    if (std::exchange(_wanted, true))
        return;
    launch();
}

void IndexerProcess::launch()
{
    int ends[2];
    _running.start();
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        startLater();
        return;
    }
    const Descriptor theirs(ends[0]);
    _input = Descriptor(ends[1]);
    if (const int error = spawn(_program, theirs.number(), _process)) {
        qCWarning(indexerLog) << _program << "cannot be started:" << std::strerror(error);
        _process = -1;
        startLater();
        return;
    }
    _end = Descriptor(int(::syscall(SYS_pidfd_open, _process, 0)));
    _ended = std::make_unique<QSocketNotifier>(_end.number(), QSocketNotifier::Read);
    connect(_ended.get(), &QSocketNotifier::activated, this, &IndexerProcess::takeEnd);
}

void IndexerProcess::takeEnd()
{
    int status = 0;
    if (::waitpid(_process, &status, WNOHANG) == 0)
        return;
    qCWarning(indexerLog) << "The indexer has ended with" << status;
    _process = -1;
    _ended->setEnabled(false);
    _ended.release()->deleteLater(); // it is calling
    _end.close();
    _input.close();
    startLater();
}

void IndexerProcess::startLater()
{
    if (std::chrono::milliseconds(_running.elapsed()) > GoodRun)
        _pause = _firstPause;
    _again.start(_pause);
    _pause = std::min<std::chrono::milliseconds>(_pause * 2, LongestPause);
}
