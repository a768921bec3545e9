// twinleaf-ditto: unpacks an archive into a folder without ever replacing what is there.

#include "files/Journal.h"
#include "platform/desktop/Trash.h"
#include "unpack/Cancellation.h"
#include "unpack/Unpacking.h"

#include <climits>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <span>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

enum ExitStatus { Done = 0, Failure = 1, Usage = 2, Cancelled = 15 };

std::optional<UnpackingJob> readArguments(std::span<char *> arguments)
{
    UnpackingJob job;
    if (arguments.size() < 2 || std::strcmp(arguments[1], "-x") != 0)
        return std::nullopt;
    arguments = arguments.subspan(2);
    if (!arguments.empty() && std::strcmp(arguments[0], "-k") == 0) {
        job.kind = ArchiveKind::PkZip;
        arguments = arguments.subspan(1);
    }
    if (arguments.size() != 2)
        return std::nullopt;
    job.archive = arguments[0];
    job.destination = arguments[1];
    return job;
}

QByteArray absolute(const QByteArray &path)
{
    char here[PATH_MAX];
    return path.startsWith('/') || !getcwd(here, sizeof here) ? path : here + ('/' + path);
}

} // namespace

int main(int count, char **arguments)
{
    Cancellation::watch();
    // It ends with the program that has started it, as if that had cancelled.
    prctl(PR_SET_PDEATHSIG, SIGTERM, 0, 0, 0);
    // Names pass as the bytes they are.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    auto job = readArguments({ arguments, size_t(count) });
    if (!job) {
        std::fputs("usage: twinleaf-ditto -x [-k] ARCHIVE DESTINATION\n", stderr);
        return Usage;
    }
    job->archive = absolute(job->archive);
    job->destination = absolute(job->destination);
    if (unpack(*job, Journal(Journal::runsFolder()),
               [](const QString &path, const QString &origin) {
                   return Trash::moveItem(path, nullptr, origin);
               }))
        return Done;
    return Cancellation::asked() ? Cancelled : Failure;
}
