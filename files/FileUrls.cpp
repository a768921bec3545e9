#include "files/FileUrls.h"

#include "files/FileName.h"
#include "files/PathText.h"

#include <climits>
#include <unistd.h>

namespace {

// "localhost" and this machine's own name stand for no host at all.
bool isThisMachine(const QByteArray &host)
{
    char name[256] = {};
    return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0
        || (gethostname(name, sizeof name - 1) == 0
            && host.compare(name, Qt::CaseInsensitive) == 0);
}

} // namespace

std::optional<QString> FileUrls::pathOf(const QByteArray &url)
{
    if (url.left(5).compare("file:", Qt::CaseInsensitive) != 0)
        return std::nullopt;
    QByteArray rest = url.mid(5);
    if (rest.startsWith("//")) {
        const qsizetype slash = rest.indexOf('/', 2);
        if (slash < 0 || !isThisMachine(rest.mid(2, slash - 2)))
            return std::nullopt;
        rest = rest.mid(slash);
    }
    const QByteArray path = QByteArray::fromPercentEncoding(rest);
    // A NUL would end the path early, at another file.
    if (!path.startsWith('/') || path.contains('\0') || path.size() >= PATH_MAX)
        return std::nullopt;
    return PathText::normalized(FileName::fromBytes(path));
}

QByteArray FileUrls::uriList(const QStringList &paths)
{
    QByteArray list;
    for (const QString &path : paths)
        list += "file://" + FileName::toBytes(path).toPercentEncoding("/") + "\r\n";
    return list;
}

FileUrls::Sorted FileUrls::sorted(const QByteArray &uriList)
{
    Sorted found;
    const auto lines = uriList.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray url = line.trimmed();
        if (url.isEmpty() || url.startsWith('#') || url == QByteArray(1, '\0'))
            continue;
        if (const auto path = pathOf(url))
            found.paths.append(*path);
        else
            found.others.append(url);
    }
    return found;
}

std::optional<QStringList> FileUrls::pathsOf(const QByteArray &uriList)
{
    const Sorted found = sorted(uriList);
    return found.paths.isEmpty() || !found.others.isEmpty() ? std::nullopt
                                                            : std::optional(found.paths);
}
