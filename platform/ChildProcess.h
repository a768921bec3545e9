#pragma once

#include <sys/types.h>

// A running child process of ours, so that it can be asked to end however late: never a stranger
// that got its number. Any thread.
class ChildProcess final {
public:
    explicit ChildProcess(pid_t process); // made before its end was waited for
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    void terminate() const; // SIGTERM; no effect when it has ended

private:
    int _descriptor;
};
