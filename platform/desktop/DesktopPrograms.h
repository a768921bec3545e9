#pragma once

#include "platform/Programs.h"

// The real programs of this machine, started by posix_spawn.
class DesktopPrograms final : public Programs {
public:
    ProgramEnd run(const QStringList &arguments,
                   const std::function<void(pid_t)> &started = {}) override;
    ProgramEnd runAt(int folder, const QStringList &arguments,
                     const std::function<void(pid_t)> &started = {}) override;
    ProgramEnd runIn(const QString &folder, const QStringList &arguments,
                     const ProgramAttention &attention = {}) override;
    void runCommand(const QString &folder, const QStringList &words,
                    const CommandAttention &attention) override; // DesktopCommands.cpp
    ProgramEnd runShell(const QString &commandLine,
                        const ProgramAttention &attention = {}) override;
};
