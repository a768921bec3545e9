#pragma once

#include "search/TextMatch.h"
#include "search/WalkRules.h"

#include <atomic>
#include <functional>

// An item by the folder it lies in (no slash at its end, "/" excepted) and its name.
using TakeHit = std::function<void(const QByteArray &folder, QByteArrayView name)>;

// Looks for names below a folder by walking, several folders at a time; what is not a folder is not
// looked at. `take` is called one at a time, but by several threads; in no order. Returns early
// when `stop` becomes true. Any thread; waits for the disk.
void walkForNames(const QByteArray &home, WalkRules rules, const TextMatch &match,
                  const std::atomic<bool> &stop, const TakeHit &take);
