#pragma once

#include <QtGlobal>

#include <optional>

#include <sys/types.h>

// The bytes a running process of ours has written so far (proc(5), "wchar"), or nothing when it is
// gone. Any thread.
std::optional<qint64> bytesWritten(pid_t process);
