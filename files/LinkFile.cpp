#include "files/LinkFile.h"

#include "files/FileName.h"
#include "files/SmallFile.h"

#include <QByteArrayView>
#include <QList>

namespace {

constexpr qint64 MostBytes = 65536;

// The path of a file: URL on this machine, with or without an empty host.
std::optional<QString> localPath(QByteArrayView url)
{
    if (!url.startsWith("file:"))
        return std::nullopt;
    url = url.sliced(5);
    if (url.startsWith("//")) {
        url = url.sliced(2);
        if (url.startsWith("localhost/"))
            url = url.sliced(9);
    }
    const QByteArray path = QByteArray::fromPercentEncoding(url.toByteArray());
    // A NUL would end the path early, at another file.
    if (!path.startsWith('/') || path.contains('\0'))
        return std::nullopt;
    return FileName::fromBytes(path);
}

} // namespace

std::optional<QString> LinkFile::target(const QString &path)
{
    if (!path.endsWith(QStringLiteral(".desktop")))
        return std::nullopt;
    QByteArray content = startOfFile(path, MostBytes);
    if (content.size() == MostBytes) // the last line may go on
        content.truncate(content.lastIndexOf('\n') + 1);
    bool entry = false;
    bool link = false;
    QByteArray url;
    const auto lines = content.split('\n');
    for (const QByteArray &raw : lines) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('[')) {
            entry = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (!entry || equals < 0)
            continue;
        const QByteArray key = line.first(equals).trimmed();
        const QByteArray value = line.sliced(equals + 1).trimmed();
        if (key == "Type")
            link = value == "Link";
        else if (key == "URL")
            url = value;
    }
    return link ? localPath(url) : std::nullopt;
}
