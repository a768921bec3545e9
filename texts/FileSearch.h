#pragma once

#include "texts/SearchPattern.h"

#include <atomic>

class FileBytes;

// Where something stands in a file of any size.
namespace FileSearch {

// What the one who searches and the one who waits for it both look at.
struct Progress {
    std::atomic<bool> isCancelled { false }; // set by the main thread
    std::atomic<qint64> done { 0 }; // bytes, of
    std::atomic<qint64> all { 1 };
};

struct Hit {
    qint64 offset = -1; // of none
    qint64 length = 0;
    bool wentAround = false; // it stands on the other side of where the search began
};

enum class Direction { Forwards, Backwards };

// The first one that begins at `from` or behind it, else the first one of all; backwards, the last
// one that begins before `from`, else the last one of all. Worker thread.
Hit find(const FileBytes &file, const SearchPattern &pattern, qint64 from, Direction direction,
         Progress &progress);

} // namespace FileSearch
