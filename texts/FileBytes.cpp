#include "texts/FileBytes.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/SystemCalls.h"

#include <QMutex>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qint64 MostUnsized = 16 << 20;

FileBytes::Refusal refusalOf(FileKind kind)
{
    using enum FileBytes::Refusal;
    switch (kind) {
    case FileKind::Regular:
        return None;
    case FileKind::Directory:
        return Folder;
    case FileKind::Fifo:
        return Pipe;
    case FileKind::Socket:
        return Socket;
    case FileKind::CharDevice:
    case FileKind::BlockDevice:
        return Device;
    case FileKind::Symlink: // one that leads in a circle
        break;
    }
    return Error;
}

FileBytes::Opened refused()
{
    return { nullptr, FileBytes::Refusal::Error, { errno, std::generic_category() } };
}

} // namespace

FileBytes::Opened FileBytes::open(const QString &path) // worker thread
{
    const auto there = fileStatus(path, Links::Follow);
    if (!there)
        return refused();
    if (const Refusal refusal = refusalOf(there->kind); refusal != Refusal::None)
        return { nullptr, refusal };
    Descriptor descriptor(SystemCalls::openat(AT_FDCWD, FileName::toBytes(path),
                                              O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    // It may be another by now.
    const auto status = descriptor.isOpen() ? statusOf(descriptor.number()) : std::nullopt;
    if (!status)
        return refused();
    if (const Refusal refusal = refusalOf(status->kind); refusal != Refusal::None)
        return { nullptr, refusal };
    const std::shared_ptr<FileBytes> file(new FileBytes(std::move(descriptor)));
    if (status->size == 0)
        file->takeUnsized();
    return { file };
}

void FileBytes::takeUnsized()
{
    QByteArray bytes(MostUnsized, Qt::Uninitialized);
    bytes.truncate(readInto(bytes.data(), 0, bytes.size()));
    bytes.squeeze();
    // An empty one may be the beginning of a log.
    struct stat status;
    if (::fstat(_descriptor.number(), &status) == 0 && status.st_size == 0)
        _unsized = bytes;
}

qint64 FileBytes::size() const
{
    if (!_unsized.isEmpty())
        return _unsized.size();
    struct stat status;
    if (::fstat(_descriptor.number(), &status) != 0)
        return 0;
    return status.st_size == _claimed ? std::min<qint64>(_realEnd, status.st_size) : status.st_size;
}

qint64 FileBytes::readInto(char *bytes, qint64 offset, qint64 length, std::error_code *error) const
{
    if (!_unsized.isEmpty()) {
        const qint64 there = std::clamp<qint64>(_unsized.size() - offset, 0, length);
        std::copy_n(_unsized.constData() + offset, there, bytes);
        return there;
    }
    qint64 got = 0;
    while (got < length) {
        const ssize_t now =
            ::pread(_descriptor.number(), bytes + got, size_t(length - got), offset + got);
        if (now < 0 && errno == EINTR)
            continue;
        if (now < 0 && error)
            *error = { errno, std::generic_category() };
        if (now < 0)
            return got;
        if (now == 0)
            break;
        got += now;
    }
    struct stat status;
    if (got < length && ::fstat(_descriptor.number(), &status) == 0
        && offset + got < status.st_size) {
        _realEnd = std::max(offset + got, status.st_size == _claimed ? _realEnd.load() : 0);
        _claimed = status.st_size;
    }
    return got;
}

QByteArray FileBytes::read(qint64 offset, qint64 length, std::error_code *error) const
{
    QByteArray bytes(std::max<qint64>(length, 0), Qt::Uninitialized);
    bytes.truncate(readInto(bytes.data(), offset, bytes.size(), error));
    return bytes;
}

FileBytes::Range FileBytes::nextWritten(qint64 offset) const
{
    const qint64 all = std::max(offset, size());
    if (!_unsized.isEmpty())
        return { offset, all };
    // The place it leaves behind matters to nobody: all readings say where they read.
    const off_t start = ::lseek(_descriptor.number(), offset, SEEK_DATA);
    if (start < 0)
        return errno == ENXIO ? Range { all, all } : Range { offset, all };
    const off_t end = ::lseek(_descriptor.number(), start, SEEK_HOLE);
    return { start, end < 0 ? all : end };
}

QString FileBytes::ownPath() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(_descriptor.number());
}
