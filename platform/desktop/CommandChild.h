#pragma once

#include <sys/types.h>

// How a command line of a person's came out, as it is written to `report`: once, when its own
// program has ended or could not be started.
struct CommandReport {
    int error; // errno of what could not be done; 0: it ran
    bool isOfFolder; // that is, to go to the folder
    int status; // exit status, or 128 + the signal
};

// Starts a command line, its program looked up in PATH, beneath a process of our own, whose id is
// answered, or -1 with errno. That one has no terminal, so that nothing can wait there for somebody
// to type, and lives as long as anything that the program has started, in whatever session or
// group. At SIGTERM, and when the thread that called this has ended, it asks all of them to end,
// and a second later, or at another SIGTERM, kills them. Any thread.
pid_t startCommand(const char *folder, char *const *words, char *const *environment, int output,
                   int errors, int report);
