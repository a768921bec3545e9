#include "search/UserAttributes.h"

#include <cerrno>
#include <sys/xattr.h>

using namespace Qt::StringLiterals;

namespace {

constexpr size_t Longest = 4096; // bytes; more is no word of a person

QString attributeText(const QByteArray &path, const char *name)
{
    char value[Longest];
    const ssize_t size = ::lgetxattr(path, name, value, sizeof value);
    return size > 0 ? QString::fromUtf8(value, size).trimmed() : QString();
}

} // namespace

QList<MetadataAttribute> userAttributes(const QByteArray &path)
{
    // Most items have no attribute at all, which one question tells.
    char names[Longest];
    const ssize_t size = ::llistxattr(path, names, sizeof names);
    if (size == 0 || (size < 0 && errno != ERANGE))
        return {};
    QList<MetadataAttribute> attributes;
    QStringList tags;
    for (const QString &tag : attributeText(path, "user.xdg.tags").split(u',')) {
        if (const QString text = tag.trimmed(); !text.isEmpty())
            tags.append(text);
    }
    if (!tags.isEmpty())
        attributes.append({ u"kMDItemUserTags"_s, tags });
    if (const QString comment = attributeText(path, "user.xdg.comment"); !comment.isEmpty())
        attributes.append({ u"kMDItemFinderComment"_s, comment });
    return attributes;
}
