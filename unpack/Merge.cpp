#include "unpack/Merge.h"

#include "files/DirectoryReader.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "platform/desktop/Trash.h"
#include "unpack/Cancellation.h"

#include <QStringList>

#include <cstdio>
#include <string>

namespace {

bool isFolder(const QString &path)
{
    const auto status = fileStatus(path, Links::NoFollow);
    return status && status->kind == FileKind::Directory;
}

bool complain(const QString &path, const std::string &reason)
{
    std::fprintf(stderr, "%s: %s\n", FileName::toBytes(path).constData(), reason.c_str());
    return false;
}

} // namespace

bool Merge::moveAll(const QString &from, const QString &to)
{
    return moveContents(from, to, {});
}

bool Merge::hasMoved(const QString &path) const
{
    for (qsizetype end = path.size(); end > 0; end = path.lastIndexOf(u'/', end - 1))
        if (_moved.contains(path.left(end)))
            return true;
    return false;
}

bool Merge::moveContents(const QString &from, const QString &to, const QString &relative)
{
    DirectoryReader reader;
    QList<QByteArray> names;
    auto failed = reader.open(from, Links::NoFollow);
    if (!failed)
        failed = reader.readNames(names);
    if (failed)
        return complain(from, failed.message());
    bool whole = true;
    for (const QByteArray &bytes : std::as_const(names)) {
        if (Cancellation::asked())
            return false;
        const QString name = FileName::fromBytes(bytes);
        const QString below = relative.isEmpty() ? name : relative + u'/' + name;
        whole = moveItem(from + u'/' + name, to + u'/' + name, below) && whole;
    }
    return whole;
}

bool Merge::moveItem(const QString &from, const QString &to, const QString &relative)
{
    auto failed = moveAlone(from, to, relative);
    if (!failed)
        return true;
    if (failed != std::errc::file_exists)
        return complain(to, failed.message());
    if (isFolder(to)) {
        if (!isFolder(from))
            return complain(to, "a folder stands in the way");
        return moveContents(from, to, relative);
    }
    if (FileFlags::isLocked(to))
        return complain(to, "is locked");
    if (!Trash::moveItem(to))
        return complain(to, "cannot be moved to the Trash");
    failed = moveAlone(from, to, relative);
    return !failed || complain(to, failed.message());
}

std::error_code Merge::moveAlone(const QString &from, const QString &to, const QString &relative)
{
    const auto failed = FileSystem::renameNoReplace(from, to);
    if (!failed)
        _moved.insert(relative);
    return failed;
}
