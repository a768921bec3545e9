#include "files/PathText.h"

#include "files/FileName.h"

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The length of a path without the slashes at its end; "/" itself keeps one.
qsizetype endOf(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    return end;
}

} // namespace

QString PathText::joined(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString PathText::lastComponent(const QString &path)
{
    const qsizetype end = endOf(path);
    if (end == 1 && path[0] == u'/')
        return u"/"_s;
    const qsizetype slash = end > 0 ? path.lastIndexOf(u'/', end - 1) : -1;
    return path.mid(slash + 1, end - slash - 1);
}

QString PathText::parent(const QString &path)
{
    const qsizetype end = endOf(path);
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
    return path.left(endOf(path) - (suffix.isEmpty() ? 0 : suffix.size() + 1));
}

QString PathText::withExtension(const QString &path, const QString &extension)
{
    return path.left(endOf(path)) + u'.' + extension;
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
    for (const QString &component : components) {
        if (!path.isEmpty() && !path.endsWith(u'/'))
            path += u'/';
        path += component;
    }
    return path;
}

QString PathText::normalized(const QString &path)
{
    if (!path.startsWith(u'/'))
        return {};
    QStringList kept { u"/"_s };
    const QStringList steps = components(path);
    for (const QString &step : steps.sliced(1)) {
        if (step != u".."_s && step != u"."_s)
            kept.append(step);
        else if (step == u".."_s && kept.size() > 1)
            kept.removeLast();
    }
    return fromComponents(kept);
}

QString PathText::fromTyped(const QString &text)
{
    const bool fromHome = text == u"~"_s || text.startsWith(u"~/"_s);
    return normalized(fromHome ? homeFolder() + text.sliced(1) : text);
}

bool PathText::isItemName(const QString &name)
{
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/')
        && !name.contains(QChar(0));
}

QString PathText::homeFolder()
{
    QByteArray home = qgetenv("HOME");
    if (!home.startsWith('/')) {
        passwd user;
        passwd *found = nullptr;
        char texts[16384];
        ::getpwuid_r(::getuid(), &user, texts, sizeof texts, &found);
        home = found ? user.pw_dir : "/";
    }
    const QString path = FileName::fromBytes(home);
    return path.left(endOf(path));
}
