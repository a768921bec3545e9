#include "search/HitCheck.h"

#include <fcntl.h>
#include <sys/stat.h>

bool HitCheck::exists(const QByteArray &folder, QByteArrayView name)
{
    struct stat status { };
    return look(folder, name, status);
}

bool HitCheck::isUnchanged(const QByteArray &folder, QByteArrayView name,
                           const PackedItem::Stamp &stamp)
{
    struct stat status { };
    if (!look(folder, name, status))
        return false;
    // Of a folder only what a person wrote on it is known, which no file in it changes.
    return S_ISDIR(status.st_mode) ? status.st_ino == stamp.inode
                                   : PackedItem::stampOf(status) == stamp;
}

bool HitCheck::look(const QByteArray &folder, QByteArrayView name, struct stat &status)
{
    if (folder != _folder || _folder.isNull()) {
        _folder = folder;
        _opened = Descriptor(::open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC));
    }
    return _opened.isOpen()
        && ::fstatat(_opened.number(), name.toByteArray(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}
