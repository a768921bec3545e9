#pragma once

#include "platform/desktop/DesktopPrograms.h"

#include <QList>
#include <QMutex>

// Runs the real programs and keeps each argument list. `before` may do something to the files
// first, or answer an exit status in the program's place.
class RecordedPrograms : public Programs {
public:
    ProgramEnd run(const QStringList &arguments,
                   const std::function<void(pid_t)> &started = {}) override
    {
        const QMutexLocker lock(&_mutex);
        runs.append(arguments);
        if (before) {
            if (const auto status = before(arguments))
                return { true, *status, errorText };
        }
        return _real.run(arguments, [&](pid_t process) {
            if (started)
                started(process);
            if (onStart)
                onStart(process);
        });
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

    QList<QStringList> runs;
    QStringList commandLines;
    std::function<std::optional<int>(const QStringList &)> before;
    QString errorText; // of a status that was answered
    std::function<void(pid_t)> onStart;
    std::function<void()> whilePacking;

private:
    QMutex _mutex;
    DesktopPrograms _real;
};
