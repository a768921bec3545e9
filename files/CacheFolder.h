#pragma once

#include <QString>

// Where programs of this person keep what can be made again: $XDG_CACHE_HOME, else "~/.cache". Any
// thread.
QString cacheFolder();
