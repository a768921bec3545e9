#include "search/IndexLock.h"

#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "search/IndexFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Careful = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

QByteArray path()
{
    return FileName::toBytes(PathText::joined(IndexFile::folder(), u"index.lock"_s));
}

} // namespace

IndexLock::IndexLock()
{
    FileSystem::makePrivateFolders(IndexFile::folder());
    _file = Descriptor(::open(path(), O_RDWR | O_CREAT | Careful, 0600));
    int result = -1;
    do
        result = _file.isOpen() ? ::flock(_file.number(), LOCK_EX) : -1;
    while (result != 0 && errno == EINTR);
    if (result != 0)
        _error = errno;
}

bool IndexLock::isInPlace() const
{
    struct stat there { };
    struct stat held { };
    return _file.isOpen() && ::lstat(path(), &there) == 0 && ::fstat(_file.number(), &held) == 0
        && there.st_ino == held.st_ino && there.st_dev == held.st_dev;
}

bool IndexLock::isHeldByAny()
{
    const Descriptor file(::open(path(), O_RDONLY | Careful));
    return file.isOpen() && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}
