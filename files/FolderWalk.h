#pragma once

#include <QString>

#include <atomic>
#include <functional>

// Visits the size in bytes of everything below a folder that is no folder, at any depth and in no
// order. Links count as themselves; what cannot be read is left out. Returns early when `stop`
// becomes true. Any thread.
void walkFiles(const QString &folder, const std::atomic<bool> &stop,
               const std::function<void(qint64 size)> &visit);

// Adds up everything below a folder, in bytes; `soFar` follows the sum. Any thread.
double folderTotal(const QString &folder, const std::atomic<bool> &stop,
                   std::atomic<qint64> *soFar = nullptr);
