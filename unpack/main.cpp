// twinleaf-ditto: unpacks an archive into a folder without ever replacing what is there.

#include "files/FileName.h"
#include "files/FileSystem.h"
#include "unpack/Cancellation.h"
#include "unpack/Extraction.h"
#include "unpack/Merge.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum ExitStatus { Done = 0, Failure = 1, Usage = 2, Cancelled = 15 };

struct Job {
    ArchiveKind kind = ArchiveKind::Cpio;
    QByteArray archive;
    QByteArray destination;
};

ExitStatus complain(const QByteArray &path, const char *reason)
{
    std::fprintf(stderr, "%s: %s\n", path.constData(), reason);
    return Failure;
}

std::optional<Job> readArguments(std::span<char *> arguments)
{
    Job job;
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

// A pipe or a device would be waited for without an end.
bool isRegularFile(const QByteArray &path)
{
    struct stat status;
    if (stat(path.constData(), &status) == 0 && !S_ISREG(status.st_mode))
        errno = EINVAL;
    else if (access(path.constData(), R_OK) == 0)
        return true;
    return false;
}

void closeFolders(const Extracted &extracted, const Merge &merge, const QByteArray &destination)
{
    // From the inside out: what is closed cannot be entered any more.
    const auto &folders = extracted.closedFolders;
    for (auto folder = folders.end(); folder != folders.begin();) {
        --folder;
        if (merge.hasMoved(FileName::fromBytes(folder.key())))
            fchmodat(AT_FDCWD, (destination + '/' + folder.key()).constData(), folder.value(), 0);
    }
}

ExitStatus unpack(const Job &job)
{
    if (!isRegularFile(job.archive))
        return complain(job.archive, std::strerror(errno));
    QByteArray staging = job.destination + "/.twinleaf-unpack-XXXXXX";
    if (!mkdtemp(staging.data()))
        return complain(job.destination, std::strerror(errno));

    bool whole = false;
    if (chdir(staging.constData()) == 0) {
        if (const auto extracted = extract(job.archive, job.kind)) {
            Merge merge;
            whole =
                merge.moveAll(FileName::fromBytes(staging), FileName::fromBytes(job.destination));
            closeFolders(*extracted, merge, job.destination);
            whole = whole && !extracted->memberRefused;
        }
    }
    if (const auto failed = FileSystem::removeTree(FileName::fromBytes(staging)))
        complain(staging, failed.message().c_str());
    if (whole)
        return Done;
    return Cancellation::asked() ? Cancelled : Failure;
}

} // namespace

int main(int count, char **arguments)
{
    Cancellation::watch();
    // Names pass as the bytes they are.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    auto job = readArguments({ arguments, size_t(count) });
    if (!job) {
        std::fputs("usage: twinleaf-ditto -x [-k] ARCHIVE DESTINATION\n", stderr);
        return Usage;
    }
    job->archive = absolute(job->archive);
    job->destination = absolute(job->destination);
    return unpack(*job);
}
