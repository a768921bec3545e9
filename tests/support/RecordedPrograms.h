#pragma once

#include "files/FileStatus.h"
#include "files/PathText.h"
#include "platform/desktop/DesktopPrograms.h"

#include <QList>
#include <QMutex>

#include <unistd.h>

// Runs the real programs and keeps each argument list. `before` may do something to the files
// first, or answer an exit status in the program's place.
class RecordedPrograms : public Programs {
public:
    ProgramEnd run(const QStringList &arguments,
                   const std::function<void(pid_t)> &started = {}) override
    {
        return record(arguments, started,
                      [&](const auto &told) { return _real.run(arguments, told); });
    }
    // Kept with a path of its last argument, a name in the folder, that leads into just this folder
    // from any process.
    ProgramEnd runAt(int folder, const QStringList &arguments,
                     const std::function<void(pid_t)> &started = {}) override
    {
        QStringList whole = arguments;
        whole.last() = QStringLiteral("/proc/%1/fd/%2/").arg(getpid()).arg(folder)
            + PathText::lastComponent(arguments.last());
        return record(whole, started,
                      [&](const auto &told) { return _real.runAt(folder, arguments, told); });
    }

    ProgramEnd runIn(const QString &folder, const QStringList &arguments,
                     const ProgramAttention &attention = {}) override
    {
        const QMutexLocker lock(&_mutex);
        runs.append(arguments);
        if (whilePacking)
            whilePacking();
        return _real.runIn(folder, arguments, attention);
    }
    ProgramEnd runShell(const QString &commandLine, const ProgramAttention &attention = {}) override
    {
        const QMutexLocker lock(&_mutex);
        commandLines.append(commandLine);
        if (whilePacking)
            whilePacking();
        return _real.runShell(commandLine, attention);
    }

    void runCommand(const QString &folder, const QStringList &words,
                    const CommandAttention &attention) override
    {
        _real.runCommand(folder, words, attention); // several at once
    }

    QList<QStringList> runs;
    QStringList commandLines;
    std::function<std::optional<int>(const QStringList &)> before;
    QString errorText; // of a status that was answered
    std::function<void(pid_t)> onStart;
    std::function<void()> whilePacking;

private:
    using Started = std::function<void(pid_t)>;
    ProgramEnd record(const QStringList &arguments, const Started &started,
                      const std::function<ProgramEnd(const Started &)> &runReal)
    {
        const QMutexLocker lock(&_mutex);
        runs.append(arguments);
        if (before) {
            if (const auto status = before(arguments))
                return { true, *status, errorText };
        }
        return runReal([&](pid_t process) {
            if (started)
                started(process);
            if (onStart)
                onStart(process);
        });
    }

    QMutex _mutex;
    DesktopPrograms _real;
};
