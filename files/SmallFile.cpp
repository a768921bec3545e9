#include "files/SmallFile.h"

#include "files/FileName.h"
#include "files/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

QByteArray startOfFile(const QString &path, qint64 limit)
{
    const int file = SystemCalls::openat(AT_FDCWD, FileName::toBytes(path).constData(),
                                         O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return {};
    struct stat status;
    QByteArray bytes;
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        bytes.resize(qMin<qint64>(status.st_size, limit));
        bytes.truncate(qMax<ssize_t>(::read(file, bytes.data(), size_t(bytes.size())), 0));
    }
    ::close(file);
    return bytes;
}
