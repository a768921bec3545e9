#include "files/TypeCode.h"

#include "files/FileName.h"

#include <sys/xattr.h>

namespace {

constexpr qsizetype CodeLength = 4;

QByteArray startOfAttribute(const char *path, const char *name)
{
    char value[64];
    const ssize_t size = ::getxattr(path, name, value, sizeof value);
    return size >= CodeLength ? QByteArray(value, CodeLength) : QByteArray();
}

} // namespace

QByteArray typeCodeOfFile(const char *path)
{
    if (::listxattr(path, nullptr, 0) <= 0) // as of most files: one question is enough
        return {};
    if (QByteArray code = startOfAttribute(path, "user.twinleaf.type"); !code.isEmpty())
        return code;
    // It stands first in there; all zero where there are only flags.
    QByteArray code = startOfAttribute(path, "user.com.apple.FinderInfo");
    return code == QByteArray(CodeLength, '\0') ? QByteArray() : code;
}

QByteArray typeCodeOfFile(const QString &path)
{
    return typeCodeOfFile(FileName::toBytes(path).constData());
}
