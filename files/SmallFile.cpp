#include "files/SmallFile.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

QByteArray startOfFile(const QString &path, qint64 limit)
{
    const Descriptor file(
        SystemCalls::openat(AT_FDCWD, FileName::toBytes(path), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    QByteArray bytes(qMin<qint64>(status.st_size, limit), Qt::Uninitialized);
    bytes.truncate(qMax<ssize_t>(::read(file.number(), bytes.data(), size_t(bytes.size())), 0));
    return bytes;
}
