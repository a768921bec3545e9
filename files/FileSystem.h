#pragma once

#include "files/FileStatus.h"

#include <system_error>

// The changes to the file system that the program makes by itself. Names are bytes, links are never
// followed, nothing is ever replaced. Each answers the system's error, or none. Any thread.
namespace FileSystem {

// Creates one folder (mode 0777 less the umask).
std::error_code makeFolder(const QString &path);

// Creates an empty file (mode 0666 less the umask).
std::error_code makeFile(const QString &path);

// Creates a folder of the person's alone (mode 0700) and those it lies in, as far as they are
// missing. Whether that worked shows when something is put there.
void makePrivateFolders(const QString &path);

// Renames within one file system and fails with file_exists rather than replace anything, as
// Rename::noReplace does.
std::error_code renameNoReplace(const QString &from, const QString &to);

// Like renameNoReplace, and lets a name change its case on a folder that folds case. "" or "." or
// ".." or a name with "/" or NUL as last component of `to` is refused with invalid_argument.
std::error_code renameItem(const QString &from, const QString &to);

// Waits until everything written to the file system that holds the path is on the medium.
std::error_code sync(const QString &path);

} // namespace FileSystem
