#include "base/CoreDumps.h"

#include <QLoggingCategory>

#include <cerrno>
#include <cstring>

#include <sys/resource.h>

Q_LOGGING_CATEGORY(lcCoreDumps, "twinleaf.coredumps", QtInfoMsg)

void enableCoreDumps()
{
    const rlimit unlimited { RLIM_INFINITY, RLIM_INFINITY };
    if (::setrlimit(RLIMIT_CORE, &unlimited) == 0)
        qCInfo(lcCoreDumps, "Enabling core dumps successfully.");
    else
        qCWarning(lcCoreDumps, "Enabling core dumps failed: %d (%s)", errno, std::strerror(errno));
}
