#include "files/FileSystem.h"

#include "files/Descriptor.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/SystemCalls.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using SystemCalls::errorOf;

std::error_code error(std::errc code)
{
    return std::make_error_code(code);
}

QByteArray lastName(const QByteArray &path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

// A NUL would end the path early: the call would then reach another item.
bool isPath(const QByteArray &path)
{
    return !path.isEmpty() && !path.contains('\0');
}

bool isFolderEntry(const QByteArray &name)
{
    return name == "." || name == "..";
}

std::error_code renameNoReplaceBytes(const QByteArray &from, const QByteArray &to)
{
    if (!isPath(from) || !isPath(to))
        return error(std::errc::invalid_argument);
    return Rename::noReplace(AT_FDCWD, from.constData(), AT_FDCWD, to.constData());
}

// Whether both names are one entry of a folder that folds case: then only one of them is listed.
bool isOneEntry(const QByteArray &from, const QByteArray &to)
{
    const QString path = FileName::fromBytes(to);
    const QString folder = PathText::parent(path);
    if (PathText::parent(FileName::fromBytes(from)) != folder
        || FileName::fromBytes(from).compare(path, Qt::CaseInsensitive) != 0)
        return false;
    struct stat a;
    struct stat b;
    if (::lstat(from.constData(), &a) != 0 || ::lstat(to.constData(), &b) != 0
        || a.st_ino != b.st_ino || a.st_dev != b.st_dev)
        return false;
    DirectoryReader reader;
    if (reader.open(folder))
        return false;
    bool listed = false;
    const bool whole = !reader.read([&](const DirectoryItem &item) {
        listed = listed || item.name == lastName(to);
        return true;
    });
    return whole && !listed;
}

} // namespace

std::error_code FileSystem::makeFolder(const QString &path)
{
    const QByteArray bytes = FileName::toBytes(path);
    return isPath(bytes) ? errorOf(::mkdir(bytes.constData(), 0777))
                         : error(std::errc::invalid_argument);
}

std::error_code FileSystem::makeFile(const QString &path)
{
    const QByteArray bytes = FileName::toBytes(path);
    if (!isPath(bytes))
        return error(std::errc::invalid_argument);
    const Descriptor made(
        ::open(bytes.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    return errorOf(made.number());
}

void FileSystem::makePrivateFolders(const QString &path)
{
    if (path.isEmpty() || exists(path))
        return;
    makePrivateFolders(PathText::parent(path));
    ::mkdir(FileName::toBytes(path).constData(), 0700);
}

std::error_code FileSystem::renameNoReplace(const QString &from, const QString &to)
{
    return renameNoReplaceBytes(FileName::toBytes(from), FileName::toBytes(to));
}

std::error_code FileSystem::renameItem(const QString &from, const QString &to)
{
    const QByteArray source = FileName::toBytes(from);
    const QByteArray target = FileName::toBytes(to);
    const QByteArray name = lastName(target);
    if (name.isEmpty() || isFolderEntry(name) || isFolderEntry(lastName(source)) || source == "/")
        return error(std::errc::invalid_argument);
    const auto failed = renameNoReplaceBytes(source, target);
    if (failed == std::errc::file_exists && isOneEntry(source, target))
        return errorOf(::rename(source.constData(), target.constData()));
    return failed;
}

std::error_code FileSystem::sync(const QString &path)
{
    const Descriptor opened(::open(FileName::toBytes(path), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    return errorOf(opened.isOpen() ? SystemCalls::syncfs(opened.number()) : -1);
}
