#include "files/DirectoryReader.h"

#include "files/FileName.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using SystemCalls::errorOf;

constexpr size_t BufferSize = 256 * 1024; // bytes

} // namespace

std::error_code DirectoryReader::open(const QString &path, Links links)
{
    _descriptor = Descriptor(SystemCalls::openat(
        AT_FDCWD, FileName::toBytes(path),
        O_RDONLY | O_DIRECTORY | O_CLOEXEC | (links == Links::NoFollow ? O_NOFOLLOW : 0)));
    return errorOf(descriptor());
}

std::error_code DirectoryReader::openAt(int folder, const char *name)
{
    _descriptor = Descriptor(
        SystemCalls::openat(folder, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW));
    return errorOf(descriptor());
}

std::error_code DirectoryReader::read(const std::function<bool(const DirectoryItem &)> &visit)
{
    return readOpen(descriptor(), visit);
}

std::error_code DirectoryReader::readOpen(int folder,
                                          const std::function<bool(const DirectoryItem &)> &visit)
{
    if (::lseek(folder, 0, SEEK_SET) != 0)
        return errorOf(-1);
    const auto buffer = std::make_unique_for_overwrite<char[]>(BufferSize);
    for (;;) {
        const long filled = ::syscall(SYS_getdents64, folder, buffer.get(), BufferSize);
        if (filled < 0)
            return errorOf(-1);
        if (filled == 0)
            return {};
        for (long at = 0; at < filled;) {
            const auto *item = reinterpret_cast<const dirent64 *>(buffer.get() + at);
            at += item->d_reclen;
            const QByteArrayView name(item->d_name, qsizetype(std::strlen(item->d_name)));
            if (name == "." || name == "..")
                continue;
            if (!visit({ name, item->d_type }))
                return {};
        }
    }
}

std::error_code DirectoryReader::readNames(int folder, QList<QByteArray> &names)
{
    return readOpen(folder, [&names](const DirectoryItem &item) {
        names.append(item.name.toByteArray());
        return true;
    });
}

bool DirectoryReader::workHere() const
{
    return ::unshare(CLONE_FS) == 0 && ::fchdir(descriptor()) == 0;
}

std::optional<FileStatus> DirectoryReader::status(const char *name, Links links) const
{
    return statxStatus(descriptor(), name, links);
}
