#include "platform/ReaderProcess.h"

#include "files/FileName.h"
#include "platform/ProgramBeside.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>

Q_LOGGING_CATEGORY(lcReader, "twinleaf.reader")

namespace {

using namespace ReaderWords;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto StartLimit = 60s; // on a machine that has much to do
constexpr auto NextTry = 10s; // after a start that failed
constexpr auto EndLimit = 500ms; // a killed process is gone by then, or waits for a disk
constexpr int LimitsAtWork = 30; // for a file on a machine that leaves hardly anything to it
// What the libraries leak and tear to pieces is given back now and then.
constexpr int QuestionsEach = 5000;
constexpr int FirstFree = 16; // numbers below are those that the reader gets

// Out of the way of the numbers that the reader gets.
Descriptor high(int number)
{
    const Descriptor low(number);
    return Descriptor(low.isOpen() ? fcntl(low.number(), F_DUPFD_CLOEXEC, FirstFree) : -1);
}

// Of the environment only what it needs to find its libraries, and the language.
std::vector<char *> environment()
{
    constexpr std::array Kept { "LANG",           "LC_",          "TZ",           "LD_LIBRARY_PATH",
                                "QT_PLUGIN_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS" };
    std::vector<char *> kept;
    for (char **entry = environ; *entry; ++entry) {
        if (std::ranges::any_of(Kept, [&](const char *name) {
                return std::strncmp(*entry, name, std::strlen(name)) == 0;
            }))
            kept.push_back(*entry);
    }
    kept.push_back(nullptr);
    return kept;
}

// Of all its threads; -1: it is gone.
qint64 processorTime(pid_t process)
{
    clockid_t clock {};
    timespec used {};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &used) != 0)
        return -1;
    return qint64(used.tv_sec) * 1'000'000'000 + used.tv_nsec;
}

int toWait(Clock::time_point end)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return int(std::clamp<qint64>(left.count(), 0, INT_MAX));
}

} // namespace

ReaderProcess::ReaderProcess(std::chrono::milliseconds limit)
    : _limit(limit)
    , _givenUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

ReaderProcess::~ReaderProcess()
{
    end();
    collectAbandoned();
}

void ReaderProcess::giveUp()
{
    eventfd_write(_givenUp.number(), 1);
}

bool ReaderProcess::isGivenUp() const
{
    pollfd given { _givenUp.number(), POLLIN, 0 };
    return poll(&given, 1, 0) != 0;
}

std::optional<pid_t> ReaderProcess::process() const
{
    return _process > 0 ? std::optional(_process) : std::nullopt;
}

ForeignFiles::Outcome ReaderProcess::read(int descriptor, const QString &name,
                                          ForeignContents &contents)
{
    contents = {};
    Answer answer;
    const Outcome outcome =
        ask({ .work = Work::Read }, descriptor, FileName::toBytes(name).right(NameLimit), answer);
    if (outcome != Outcome::Read)
        return outcome;
    QByteArray attributes(answer.attributesSize, Qt::Uninitialized);
    QString text(answer.textSize, Qt::Uninitialized);
    const qint64 textBytes = text.size() * qint64(sizeof(QChar));
    const bool taken = take(0, attributes.data(), attributes.size())
        && take(attributes.size(), text.data(), textBytes);
    freeMemory(attributes.size() + textBytes);
    const auto read = attributesIn(attributes);
    if (!taken || !read) {
        end();
        return Outcome::Failed;
    }
    contents = { *read, text, answer.textWasCut != 0 };
    return outcome;
}

ForeignFiles::Outcome ReaderProcess::picture(int descriptor, const QSize &bound, QImage &image,
                                             QSize &size)
{
    image = {};
    size = {};
    Answer answer;
    const Outcome outcome =
        ask({ .work = Work::Picture, .width = bound.width(), .height = bound.height() }, descriptor,
            {}, answer);
    if (outcome != Outcome::Read)
        return outcome;
    QImage shown(answer.shownWidth, answer.shownHeight, QImage::Format_ARGB32_Premultiplied);
    // Rows of four bytes a pixel have no gaps.
    const bool taken = !shown.isNull() && take(0, shown.bits(), shown.sizeInBytes());
    freeMemory(qint64(answer.shownWidth) * answer.shownHeight * 4);
    if (!taken)
        return Outcome::Failed;
    image = shown;
    size = { answer.width, answer.height };
    return outcome;
}

ForeignFiles::Outcome ReaderProcess::ask(Question question, int descriptor, const QByteArray &name,
                                         Answer &answer)
{
    collectAbandoned();
    const int flags = fcntl(descriptor, F_GETFL);
    if (flags < 0)
        return Outcome::Failed;
    if ((flags & O_ACCMODE) != O_RDONLY) {
        qCWarning(lcReader, "A file that can be written to is not handed to the reader.");
        return Outcome::Failed;
    }
    if (_asked >= QuestionsEach)
        end();
    question.number = ++_number;
    // It may have been ended since the last question, by no fault of this file.
    bool sent = false;
    for (int tries = 0; tries < 2 && !sent && !isGivenUp(); ++tries) {
        if (_process <= 0 && !start())
            return Outcome::NoReader;
        sent = send(question, descriptor, name);
        if (!sent)
            end();
    }
    if (!sent)
        return Outcome::NoReader;
    ++_asked;
    const Come come = receiveAtWork(&answer, sizeof answer);
    if (come == Come::Packet && isAnswer(answer, question))
        return Outcome(answer.outcome);
    const bool isLate = come == Come::Late || (come == Come::End && wasEndedByAnother());
    end();
    freeMemory(MemorySize);
    if (isGivenUp())
        return Outcome::NoReader;
    return isLate ? Outcome::Late : Outcome::Failed;
}

// Longer than the limit, while it gets something of the processor: so much of that that it is no
// good any more ends it.
ReaderProcess::Come ReaderProcess::receiveAtWork(void *packet, size_t size)
{
    const auto end = Clock::now() + _limit * LimitsAtWork;
    Come come = receive(packet, size, _limit);
    auto used = processorTime(_process);
    const auto look = std::clamp<std::chrono::milliseconds>(_limit, 1s, 10s);
    while (come == Come::Late && Clock::now() < end) {
        come = receive(packet, size, look);
        if (std::exchange(used, processorTime(_process)) == used)
            break;
    }
    return come;
}

// By the machine, when memory is short, or by a person.
bool ReaderProcess::wasEndedByAnother()
{
    siginfo_t ended {};
    const Descriptor process(int(syscall(SYS_pidfd_open, _process, 0)));
    pollfd waited { process.number(), POLLIN, 0 };
    return process.isOpen() && !isGivenUp()
        && poll(&waited, 1, int(std::chrono::milliseconds(EndLimit).count())) > 0
        && waitid(P_PID, id_t(_process), &ended, WEXITED | WNOHANG | WNOWAIT) == 0
        && ended.si_code == CLD_KILLED
        && (ended.si_status == SIGKILL || ended.si_status == SIGTERM);
}

bool ReaderProcess::start()
{
    if (_failed && Clock::now() - *_failed < NextTry)
        return false;
    _failed = Clock::now();
    if (!_memory.isOpen()) {
        // Its size never changes, so that no page of it can go while one looks at it.
        _memory = high(memfd_create("twinleaf-reader", MFD_CLOEXEC | MFD_ALLOW_SEALING));
        if (!_memory.isOpen() || ftruncate(_memory.number(), MemorySize) != 0
            || fcntl(_memory.number(), F_ADD_SEALS, F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_SEAL)
                != 0) {
            qCWarning(lcReader, "No memory to share with the reader: %s", std::strerror(errno));
            _memory.close();
            return false;
        }
    }
    int sockets[2] { -1, -1 };
    int life[2] { -1, -1 };
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets) != 0)
        return false;
    _socket = Descriptor(sockets[0]);
    Descriptor socket = high(sockets[1]);
    if (pipe2(life, O_CLOEXEC) != 0)
        return false;
    _life = Descriptor(life[1]);
    const Descriptor lifeEnd = high(life[0]);
    const bool started =
        socket.isOpen() && lifeEnd.isOpen() && spawn(socket.number(), lifeEnd.number());
    socket.close(); // so that its end is seen
    Hello hello;
    const Come come = started ? receive(&hello, sizeof hello, StartLimit) : Come::End;
    if (come != Come::Packet || hello.magic != Hello::Magic) {
        // It is looked for at each start, and may have been replaced under this program.
        if (come == Come::Packet)
            qCWarning(lcReader,
                      "twinleaf-reader is of another version than this program, which has "
                      "to be ended and started again.");
        end();
        return false;
    }
    // System calls alone close everything, too.
    if (!(hello.closed & CallsClosed) && std::exchange(_closed, hello.closed) != hello.closed)
        qCWarning(
            lcReader,
            "This system does not let the reader of foreign files close its system calls: %s.",
            hello.closed & PathsClosed ? "paths are closed" : "it has limits only");
    _failed.reset();
    return true;
}

bool ReaderProcess::spawn(int socket, int life)
{
    QByteArray path = programBeside("twinleaf-reader");
    char *const arguments[] = { path.data(), nullptr };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, socket, SocketNumber);
    posix_spawn_file_actions_adddup2(&actions, _memory.number(), MemoryNumber);
    posix_spawn_file_actions_adddup2(&actions, life, LifeNumber);
    posix_spawn_file_actions_addclosefrom_np(&actions, LifeNumber + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    const int error = posix_spawnp(&_process, path.constData(), &actions, &attributes, arguments,
                                   environment().data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        _process = -1;
        qCWarning(lcReader, "%s cannot be started: %s", path.constData(), std::strerror(error));
        return false;
    }
    return true;
}

bool ReaderProcess::send(const Question &question, int descriptor, const QByteArray &name)
{
    iovec parts[] { { const_cast<Question *>(&question), sizeof question },
                    { const_cast<char *>(name.data()), size_t(name.size()) } };
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] {};
    msghdr message {};
    message.msg_iov = parts;
    message.msg_iovlen = std::size(parts);
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr *const file = CMSG_FIRSTHDR(&message);
    file->cmsg_level = SOL_SOCKET;
    file->cmsg_type = SCM_RIGHTS;
    file->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(file), &descriptor, sizeof descriptor);
    return sendmsg(_socket.number(), &message, MSG_NOSIGNAL | MSG_DONTWAIT) > 0;
}

// A packet of exactly that size; one of another size is none.
ReaderProcess::Come ReaderProcess::receive(void *packet, size_t size,
                                           std::chrono::milliseconds limit)
{
    const auto end = Clock::now() + limit;
    while (true) {
        pollfd waited[] { { _socket.number(), POLLIN, 0 }, { _givenUp.number(), POLLIN, 0 } };
        const int ready = poll(waited, std::size(waited), toWait(end));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return Come::Late;
        if (waited[1].revents != 0)
            return Come::End;
        const ssize_t come = recv(_socket.number(), packet, size, MSG_DONTWAIT | MSG_TRUNC);
        return come == ssize_t(size) ? Come::Packet : Come::End;
    }
}

// By reading, not by mapping: what was checked does not change any more.
bool ReaderProcess::take(qint64 at, void *bytes, qint64 size) const
{
    auto *to = static_cast<char *>(bytes);
    while (size > 0) {
        const ssize_t taken = pread(_memory.number(), to, size_t(size), at);
        if (taken <= 0)
            return false;
        at += taken;
        to += taken;
        size -= taken;
    }
    return true;
}

// Small answers write over each other; large ones do not keep their memory until the next one.
void ReaderProcess::freeMemory(qint64 size) const
{
    constexpr qint64 Kept = qint64(1) << 20;
    if (size > Kept && _memory.isOpen())
        fallocate(_memory.number(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0, size);
}

void ReaderProcess::end()
{
    _socket.close();
    _life.close();
    _asked = 0;
    if (_process <= 0)
        return;
    const Descriptor process(int(syscall(SYS_pidfd_open, _process, 0)));
    kill(_process, SIGKILL);
    pollfd ended { process.number(), POLLIN, 0 };
    if (process.isOpen())
        poll(&ended, 1, int(std::chrono::milliseconds(EndLimit).count()));
    _abandoned.push_back(std::exchange(_process, -1));
    collectAbandoned();
}

void ReaderProcess::collectAbandoned()
{
    std::erase_if(_abandoned,
                  [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
}
