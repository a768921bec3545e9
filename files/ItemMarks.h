#pragma once

#include "files/FileStatus.h"

#include <QByteArray>

#include <system_error>

// What the program itself notes on an item, as extended attributes: its lock, and by which codes it
// belongs to an application. `item`: an open descriptor, which need not be open for reading
// (O_PATH). What can be changed answers the system's error, or none. Any thread.
namespace ItemMarks {

// The owner's lock. See FileFlags::isLocked, which is what the file operations go by.
inline constexpr char LockName[] = "user.twinleaf.locked";
bool isMarked(const char *path, Links links); // even where the item may not be read

struct Lock {
    bool immutable = false; // FS_IMMUTABLE_FL
    bool marked = false; // by its owner
    bool canBeImmutable = false; // whether the file system has such a flag for it
};
Lock lockOf(int item);
std::error_code setMarked(int item, bool locked);

// Four characters each; "" for none.
struct Codes {
    QByteArray type;
    QByteArray creator;
};
// Writes those that differ. No error where the item can keep none.
std::error_code setCodes(int item, const Codes &codes);

} // namespace ItemMarks
