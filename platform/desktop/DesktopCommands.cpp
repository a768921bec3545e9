#include "files/Descriptor.h"
#include "files/FileName.h"
#include "platform/desktop/CommandChild.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/ProgramWords.h"
#include "platform/desktop/SilentBus.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

// The command lines of the internal terminal.

namespace {

constexpr qsizetype OutputLimit = 16 << 20; // bytes
constexpr qsizetype ErrorsLimit = 64 << 10; // bytes
constexpr int PipeSize = 1 << 20; // bytes; as much as anybody may have

QList<QByteArray> asBytes(const QStringList &words)
{
    QList<QByteArray> bytes;
    for (const QString &word : words)
        bytes.append(FileName::toBytes(word));
    return bytes;
}

// Ours, with the buses that this run does without, the folder, and a terminal that can do nothing
// but show lines.
QList<QByteArray> environmentIn(const QByteArray &folder)
{
    QList<QPair<QByteArray, QByteArray>> set { { "PWD", folder }, { "TERM", "dumb" } };
    for (const SilentBus &bus : silentBuses())
        set.append({ bus.variable, bus.address });
    QList<QByteArray> lines;
    for (char **line = environ; *line; ++line) {
        const QByteArrayView each(*line);
        const auto isSet = [each](const auto &variable) {
            return each.startsWith(variable.first)
                && each.sliced(variable.first.size()).startsWith('=');
        };
        if (std::none_of(set.cbegin(), set.cend(), isSet))
            lines.append(each.toByteArray());
    }
    for (const auto &[name, value] : set)
        if (!value.isNull())
            lines.append(name + '=' + value);
    return lines;
}

// A pipe from the child, and the beginning of what came out of it.
class Inlet {
public:
    bool open()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reading = Descriptor(ends[0]);
        writing = Descriptor(ends[1]);
        fcntl(reading.number(), F_SETFL, O_NONBLOCK);
        fcntl(reading.number(), F_SETPIPE_SZ, PipeSize);
        return true;
    }
    // What is past the limit is thrown away, so that the child never waits for us. Answers how much
    // there was; nothing is read from it any more when it has ended.
    qsizetype read(qsizetype limit)
    {
        static thread_local char buffer[64 << 10];
        const ssize_t count = ::read(reading.number(), buffer, sizeof buffer);
        if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN))
            reading.close();
        if (count <= 0)
            return 0;
        const qsizetype room = qMin<qsizetype>(count, limit - bytes.size());
        bytes.append(buffer, room);
        isCut = isCut || room < count;
        return count;
    }
    // What is in the pipe now; a child that goes on writing does not hold us.
    void drain(qsizetype limit)
    {
        for (qsizetype left = PipeSize; left > 0 && reading.isOpen();) {
            const qsizetype count = read(limit);
            if (count == 0)
                return;
            left -= count;
        }
    }

    Descriptor reading;
    Descriptor writing; // the child's
    QByteArray bytes;
    bool isCut = false;
};

// Of a program looked up in PATH: a folder there that may not be entered makes the system say that
// the program may not be run, though there is none.
bool isNowhere(const QByteArray &program)
{
    const QList<QByteArray> folders = qgetenv("PATH").split(':');
    return !program.contains('/')
        && std::none_of(folders.cbegin(), folders.cend(), [&](const QByteArray &folder) {
               return access(QByteArray(folder + '/' + program).constData(), F_OK) == 0;
           });
}

CommandEnd endOf(const CommandReport &report, const QStringList &words, Inlet &output,
                 Inlet &errors)
{
    CommandEnd end { .error = report.error, .status = report.status };
    output.drain(OutputLimit);
    errors.drain(ErrorsLimit);
    end.output = std::move(output.bytes);
    end.outputIsCut = output.isCut;
    end.errors = std::move(errors.bytes);
    if (report.isOfFolder && (report.error == ENOENT || report.error == ENOTDIR))
        end.errors = "Directory does not exists!";
    else if (!report.isOfFolder && report.error == EACCES
             && isNowhere(FileName::toBytes(words.first())))
        end.error = ENOENT;
    if (!report.isOfFolder && end.error == ENOENT)
        end.errors = FileName::toBytes(words.first()) + ": command not found";
    return end;
}

} // namespace

void DesktopPrograms::runCommand(const QString &folder, const QStringList &words,
                                 const CommandAttention &attention)
{
    Inlet output;
    Inlet errors;
    Inlet report;
    pid_t process = -1;
    int failed = 0;
    if (!words.isEmpty() && output.open() && errors.open() && report.open()) {
        const QByteArray place = FileName::toBytes(folder);
        const ProgramWords vector(asBytes(words));
        const ProgramWords environment(environmentIn(place));
        process =
            startCommand(place.constData(), vector.data(), environment.data(),
                         output.writing.number(), errors.writing.number(), report.writing.number());
    }
    failed = errno;
    if (process < 0) {
        if (attention.ended)
            attention.ended({ .error = failed });
        return;
    }
    output.writing.close();
    errors.writing.close();
    report.writing.close(); // so that it ends with the process that attends
    if (attention.started)
        attention.started(process);

    bool told = false;
    const auto tell = [&](const CommandReport &said) {
        const CommandEnd end = endOf(said, words, output, errors);
        if (!told && attention.ended)
            attention.ended(end);
        told = true;
    };
    while (report.reading.isOpen()) {
        pollfd watched[] = { { output.reading.number(), POLLIN, 0 },
                             { errors.reading.number(), POLLIN, 0 },
                             { report.reading.number(), POLLIN, 0 } };
        if (poll(watched, 3, -1) < 0 && errno != EINTR)
            break;
        if (watched[0].revents)
            output.read(told ? 0 : OutputLimit);
        if (watched[1].revents)
            errors.read(told ? 0 : ErrorsLimit);
        if (watched[2].revents)
            report.drain(PipeSize);
        CommandReport said {};
        if (!told && report.bytes.size() >= qsizetype(sizeof said)) {
            memcpy(&said, report.bytes.constData(), sizeof said);
            tell(said);
        }
    }
    // As long as nobody has waited for it, its number is given to no other.
    siginfo_t last;
    while (waitid(P_PID, id_t(process), &last, WEXITED | WNOWAIT) < 0 && errno == EINTR) { }
    if (attention.gone)
        attention.gone();
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    if (!told) // it was killed itself
        tell({ 0, false, WIFSIGNALED(status) ? 128 + WTERMSIG(status) : EXIT_FAILURE });
}
