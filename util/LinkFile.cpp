#include "util/LinkFile.h"

#include "platform/FileName.h"
#include "platform/SmallFile.h"

#include <QList>

std::optional<QString> LinkFile::target(const QString &path)
{
    if (!path.endsWith(QStringLiteral(".desktop")))
        return std::nullopt;
    bool entry = false;
    bool link = false;
    QByteArray url;
    const auto lines = startOfFile(path, 65536).split('\n');
    for (const QByteArray &raw : lines) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('['))
            entry = line == "[Desktop Entry]";
        else if (entry && line == "Type=Link")
            link = true;
        else if (entry && line.startsWith("URL="))
            url = line.mid(4);
    }
    if (!link || !url.startsWith("file://"))
        return std::nullopt;
    const QByteArray target = QByteArray::fromPercentEncoding(url.mid(7));
    return target.startsWith('/') ? std::optional(FileName::fromBytes(target)) : std::nullopt;
}
