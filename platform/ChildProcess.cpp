#include "platform/ChildProcess.h"

#include <csignal>
#include <sys/syscall.h>
#include <unistd.h>

// By number: the C library's header for these calls is not made for C++.

ChildProcess::ChildProcess(pid_t process)
    : _descriptor(int(syscall(SYS_pidfd_open, process, 0)))
{
}

ChildProcess::~ChildProcess()
{
    if (_descriptor >= 0)
        close(_descriptor);
}

void ChildProcess::terminate() const
{
    if (_descriptor >= 0)
        syscall(SYS_pidfd_send_signal, _descriptor, SIGTERM, nullptr, 0);
}
