#pragma once

#include <QString>

// What tells a folder from every other, also after a restart and whatever is mounted where it lay:
// the file system's own identity, the inode number and the time of birth, as a text. Empty when the
// folder does not answer. Any thread.
QString folderMark(int folder);

// The same of the file system alone, asked at the nearest folder of the path that is there.
QString fileSystemMark(const QString &path);

// Whether an item keeps its inode number while it lies unused or its volume is away: not where the
// kernel makes the numbers up, as for FAT.
bool keepsInodes(int folder);

// Whether an item may be reached by other spellings of its name, so that one that somebody used
// does not tell how the folder lists it.
bool foldsNames(int folder);
