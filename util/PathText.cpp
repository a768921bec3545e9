#include "util/PathText.h"

#include "platform/FileName.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

QString PathText::joined(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString PathText::lastComponent(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    if (end == 1 && path[0] == u'/')
        return u"/"_s;
    const qsizetype slash = end > 0 ? path.lastIndexOf(u'/', end - 1) : -1;
    return path.mid(slash + 1, end - slash - 1);
}

QString PathText::parent(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    qsizetype slash = end > 0 ? path.lastIndexOf(u'/', end - 1) : -1;
    if (slash < 0)
        return {};
    while (slash > 0 && path[slash - 1] == u'/')
        --slash;
    return slash == 0 ? u"/"_s : path.left(slash);
}

QString PathText::extension(const QString &path)
{
    const QString name = lastComponent(path);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.mid(dot + 1) : QString();
}

QString PathText::withoutExtension(const QString &path)
{
    const QString suffix = extension(path);
    return suffix.isEmpty() ? path : path.chopped(suffix.size() + 1);
}

QString PathText::withExtension(const QString &path, const QString &extension)
{
    return path + u'.' + extension;
}

QStringList PathText::components(const QString &path)
{
    QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    if (path.startsWith(u'/'))
        components.prepend(u"/"_s);
    return components;
}

QString PathText::fromComponents(const QStringList &components)
{
    QString path;
    for (const QString &component : components)
        path = path.isEmpty() ? component : joined(path, component);
    return path;
}

bool PathText::isItemName(const QString &name)
{
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/')
        && !name.contains(QChar(0));
}

QString PathText::homeFolder()
{
    const char *home = std::getenv("HOME");
    if (!home || *home != '/') {
        const passwd *user = ::getpwuid(::getuid());
        home = user ? user->pw_dir : "/";
    }
    const QString path = FileName::fromBytes(home);
    return path.size() > 1 && path.endsWith(u'/') ? path.chopped(1) : path;
}
