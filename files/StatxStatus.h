#pragma once

#include "files/FileStatus.h"

// statx(2) as a FileStatus, for the functions of this folder. `name` is relative to the descriptor,
// which may be AT_FDCWD.
std::optional<FileStatus> statxStatus(int folder, const char *name, Links links);
