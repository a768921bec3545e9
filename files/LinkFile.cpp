#include "files/LinkFile.h"

#include "files/DesktopEntry.h"
#include "files/FileUrls.h"
#include "files/SmallFile.h"

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
    const auto type = DesktopEntry::value(content, "Type");
    const auto url = DesktopEntry::value(content, "URL");
    return type == "Link" && url ? FileUrls::pathOf(*url) : std::nullopt;
}
