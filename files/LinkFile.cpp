#include "files/LinkFile.h"

#include "files/FileUrls.h"
#include "files/SmallFile.h"

#include <QList>

namespace {

constexpr qint64 MostBytes = 65536; // what is read of a file

} // namespace

std::optional<QString> LinkFile::target(const QString &path)
{
    if (!path.endsWith(QStringLiteral(".desktop")))
        return std::nullopt;
    QByteArray content = startOfFile(path, MostBytes);
    if (content.size() == MostBytes) // the last line may go on
        content.truncate(content.lastIndexOf('\n') + 1);
    return targetIn(content);
}

std::optional<QString> LinkFile::targetIn(const QByteArray &content)
{
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
    return link ? FileUrls::pathOf(url) : std::nullopt;
}
