#include "files/HeldItem.h"

#include "files/FileName.h"
#include "files/ItemMarks.h"
#include "files/SystemCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/statvfs.h>

std::shared_ptr<const HeldItem> HeldItem::at(const QString &path, Links links, std::error_code &why)
{
    const int following = links == Links::NoFollow ? O_NOFOLLOW : 0;
    Descriptor descriptor(SystemCalls::openat(AT_FDCWD, FileName::toBytes(path).constData(),
                                              O_PATH | O_CLOEXEC | following));
    const auto status = descriptor.isOpen() ? statusOf(descriptor.number()) : std::nullopt;
    why = status ? std::error_code() : std::error_code(errno, std::generic_category());
    if (!status)
        return nullptr;
    return std::shared_ptr<const HeldItem>(new HeldItem(std::move(descriptor), *status));
}

std::optional<FileStatus> HeldItem::statusNow() const
{
    return statusOf(_descriptor.number());
}

bool HeldItem::isOnReadOnlyDisk() const
{
    struct statvfs status;
    return ::fstatvfs(_descriptor.number(), &status) == 0 && (status.f_flag & ST_RDONLY);
}

bool HeldItem::isLocked() const
{
    const ItemMarks::Lock lock = ItemMarks::lockOf(_descriptor.number());
    return lock.immutable || lock.marked;
}

QString HeldItem::ownPath() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(_descriptor.number());
}

QString HeldItem::presentPath() const
{
    const QString path = linkTarget(ownPath()).value_or(QString());
    // Of a removed item it is a text that leads nowhere, or to another one.
    const auto found = fileStatus(path, Links::NoFollow);
    return found && found->identity == _status.identity ? path : QString();
}
