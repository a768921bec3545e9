#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Runs a program to its end. Ends the benchmark when it fails.
inline void runProgram(const std::vector<QByteArray> &words)
{
    std::vector<char *> arguments;
    for (const QByteArray &word : words)
        arguments.push_back(const_cast<char *>(word.constData()));
    arguments.push_back(nullptr);
    pid_t process = 0;
    int status = 1;
    if (posix_spawn(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0)
        waitpid(process, &status, 0);
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", arguments[0]);
        std::exit(1);
    }
}
