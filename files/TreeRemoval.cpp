#include "files/TreeRemoval.h"

#include "files/DirectoryReader.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"

#include <QList>

#include <cerrno>
#include <fcntl.h>

namespace {

using SystemCalls::errorOf;

std::error_code error(std::errc code)
{
    return std::make_error_code(code);
}

class Removal {
public:
    Removal(quint64 device, ClosedFolders closed)
        : _device(device)
        , _closed(closed)
    {
    }

    // Depth costs one descriptor a level.
    std::error_code remove(int folder, const char *name, const FileStatus &status)
    {
        if (status.identity.device != _device || status.mountPoint)
            return error(std::errc::device_or_resource_busy);
        if (status.kind != FileKind::Directory)
            return errorOf(SystemCalls::unlinkat(folder, name, 0));
        DirectoryReader reader;
        auto failed = reader.openAt(folder, name);
        if (failed == std::errc::permission_denied && _closed == ClosedFolders::Open
            && ::fchmodat(folder, name, 0700, AT_SYMLINK_NOFOLLOW) == 0)
            failed = reader.openAt(folder, name);
        if (failed)
            return failed;
        // What was looked at may have been swapped for another folder since.
        const auto opened = statusOf(reader.descriptor());
        if (!opened || opened->identity != status.identity)
            return error(std::errc::device_or_resource_busy);
        if (_closed == ClosedFolders::Open && (status.mode & 0700) != 0700)
            SystemCalls::fchmod(reader.descriptor(), 0700);
        failed = removeContents(reader);
        return failed ? failed : errorOf(SystemCalls::unlinkat(folder, name, AT_REMOVEDIR));
    }

private:
    std::error_code removeContents(DirectoryReader &reader)
    {
        QList<QByteArray> names;
        if (const auto failed = DirectoryReader::readNames(reader.descriptor(), names))
            return failed;
        std::error_code first;
        for (const QByteArray &name : std::as_const(names)) {
            const auto status = reader.status(name.constData(), Links::NoFollow);
            const auto failed =
                status ? remove(reader.descriptor(), name.constData(), *status) : errorOf(-1);
            if (!first && failed != std::errc::no_such_file_or_directory) // gone by itself
                first = failed;
        }
        return first;
    }

    quint64 _device;
    ClosedFolders _closed;
};

} // namespace

std::error_code removeTreeAt(int folder, const char *name,
                             const std::optional<FileIdentity> &expected, ClosedFolders closed)
{
    const auto status = statxStatus(folder, name, Links::NoFollow);
    if (!status)
        return errorOf(-1);
    if (expected && status->identity != *expected)
        return error(std::errc::device_or_resource_busy);
    return Removal(status->identity.device, closed).remove(folder, name, *status);
}
