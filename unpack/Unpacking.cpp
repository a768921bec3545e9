#include "unpack/Unpacking.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Staging.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"

#include <QByteArrayList>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using SystemCalls::errorOf;

namespace {

constexpr int Folder = O_DIRECTORY | O_CLOEXEC;

bool complain(const QByteArray &path, const std::string &reason)
{
    std::fprintf(stderr, "%s: %s\n", path.constData(), reason.c_str());
    return false;
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

// A folder below another, no link on the way.
Descriptor openBelow(int folder, const QByteArray &path)
{
    Descriptor opened(openat(folder, ".", O_PATH | Folder));
    const QByteArrayList names = path.split('/');
    for (qsizetype at = 0; at < names.size() && opened.isOpen(); ++at) {
        const int mode = at + 1 == names.size() ? O_RDONLY : O_PATH;
        opened =
            Descriptor(SystemCalls::openat(opened.number(), names[at], mode | O_NOFOLLOW | Folder));
    }
    return opened;
}

void closeFolders(const Extracted &extracted, const Merge &merge, int destination)
{
    // From the inside out: what is closed cannot be entered any more.
    const auto &folders = extracted.closedFolders;
    for (auto folder = folders.end(); folder != folders.begin();) {
        --folder;
        if (!merge.hasMoved(folder.key()))
            continue;
        const Descriptor opened = openBelow(destination, folder.key());
        const auto status = statusOf(opened.number());
        if (status && status->identity == folder->identity)
            SystemCalls::fchmod(opened.number(), folder->permissions);
    }
}

} // namespace

bool unpack(const UnpackingJob &job, const Journal &journal, const Merge::ToTrash &toTrash)
{
    if (!isRegularFile(job.archive))
        return complain(job.archive, std::strerror(errno));
    const Descriptor destination(open(job.destination.constData(), O_RDONLY | Folder));
    if (!destination.isOpen())
        return complain(job.destination, std::strerror(errno));
    const QString path = FileName::fromBytes(job.destination);
    Staging staging(destination.number(), path, journal);
    if (const auto failed = staging.open())
        return complain(job.destination, failed.message());
    const QByteArray name =
        FileName::toBytes(PathText::lastComponent(FileName::fromBytes(job.archive)));
    const QByteArray entry = staging.entry({ StagedName::Unpacking, staging.nextNumber(), name });
    Descriptor made;
    if (SystemCalls::mkdirat(staging.descriptor(), entry, 0700) == 0)
        made = Descriptor(
            SystemCalls::openat(staging.descriptor(), entry, O_RDONLY | O_NOFOLLOW | Folder));
    const auto status = statusOf(made.number());
    if (!status || fchdir(made.number()) != 0)
        return complain(job.destination, std::strerror(errno));

    bool whole = false;
    if (const auto extracted = extract(job.archive, job.kind)) {
        Merge merge(staging, path, toTrash);
        whole = merge.moveAll(made.number(), destination.number());
        closeFolders(*extracted, merge, destination.number());
        whole = whole && !extracted->memberRefused;
    }
    const auto end =
        removeTreeAt(staging.descriptor(), entry, status->identity, ClosedFolders::Open);
    if (end.failed)
        complain(FileName::toBytes(staging.path()), end.failed.message());
    return whole;
}
