#pragma once

#include <QString>

#include <atomic>
#include <system_error>

struct stat;

// Copying one plain file by its open descriptors, with what the copy command keeps of it (mode,
// owner where allowed, access list, times) and its user attributes. Any thread.
namespace FileCopy {

// The bytes, to the end of the source however long it is by then: shared where the file system can
// do that, else copied inside the kernel with the holes kept, else by hand. `done` counts them.
std::error_code copyContent(int source, const struct stat &status, int target,
                            std::atomic<qint64> *done);

// Everything but the bytes; last of all the times. Set-id bits go where the owner cannot be kept.
// `removesList`: the target's folder hands an access list on, which is taken away again. `lost`:
// why times are missing, or user attributes although the file system knows such.
std::error_code copyProperties(int source, const struct stat &status, int target, bool removesList,
                               std::error_code &lost);

// The user attributes alone, of a file or folder. Links are refused.
std::error_code copyUserAttributes(const QString &source, const QString &target);

// Has what was written to a file accepted, which a server may refuse only now. `toDevice`: also
// flushes it.
std::error_code finish(int target, bool toDevice);
// Whether files in the folder reach the device only when each is flushed: a file system run by a
// program is told nothing of syncfs(2).
bool isFlushedByFile(int folder);

// Whether new files in the folder get an access list from it.
bool handsOnAccessList(int folder);

} // namespace FileCopy
