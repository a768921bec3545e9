#pragma once

#include <system_error>

// Taking a name by descriptors of folders (or AT_FDCWD and whole paths). Any thread.
namespace Rename {

// Fails with file_exists rather than replace anything. Uses RENAME_NOREPLACE; where the file system
// lacks it, a hard link and an unlink, which cannot replace either, or a check and a plain rename.
std::error_code noReplace(int fromFolder, const char *from, int toFolder, const char *to);

// Both names change places in one step; not_supported where the file system cannot.
std::error_code exchange(int folder, const char *name, int otherFolder, const char *other);

// Whether the error says that the file system does not know the call, or these flags.
bool isUnsupported(const std::error_code &failed);

} // namespace Rename
