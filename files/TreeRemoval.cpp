#include "files/TreeRemoval.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
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

    const QByteArray &stays() const { return _stays; }

private:
    std::error_code removeContents(DirectoryReader &reader)
    {
        QList<QByteArray> names;
        if (const auto failed = DirectoryReader::readNames(reader.descriptor(), names))
            return failed;
        std::error_code first;
        QByteArray stays;
        for (const QByteArray &name : std::as_const(names)) {
            const auto status = reader.status(name.constData(), Links::NoFollow);
            _stays.clear();
            const auto failed =
                status ? remove(reader.descriptor(), name.constData(), *status) : errorOf(-1);
            if (first || !failed || failed == std::errc::no_such_file_or_directory)
                continue; // at the last of these it has gone by itself
            first = failed;
            stays = _stays.isEmpty() ? name : name + '/' + _stays;
        }
        _stays = stays;
        return first;
    }

    quint64 _device;
    QByteArray _stays; // of the tree that was removed last
    ClosedFolders _closed;
};

} // namespace

QString TreeRemovalEnd::reason() const
{
    const QString why = QString::fromStdString(failed.message());
    return stays.isEmpty() ? why
                           : filled(localized("'%@' stays: %@. What else was in it may be gone."),
                                    FileName::shown(FileName::fromBytes(stays)), why);
}

TreeRemovalEnd removeTreeAt(int folder, const char *name,
                            const std::optional<FileIdentity> &expected, ClosedFolders closed)
{
    const auto status = statxStatus(folder, name, Links::NoFollow);
    if (!status)
        return { errorOf(-1) };
    if (expected && status->identity != *expected)
        return { error(std::errc::device_or_resource_busy) };
    Removal removal(status->identity.device, closed);
    const auto failed = removal.remove(folder, name, *status);
    return { failed, failed ? removal.stays() : QByteArray() };
}
