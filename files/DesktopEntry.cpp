#include "files/DesktopEntry.h"

#include <QList>

std::optional<QByteArray> DesktopEntry::value(const QByteArray &content, QByteArrayView key)
{
    bool mainGroup = false;
    std::optional<QByteArray> found;
    const auto lines = content.split('\n');
    for (const QByteArray &raw : lines) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('[')) {
            mainGroup = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (mainGroup && equals >= 0 && line.first(equals).trimmed() == key)
            found = line.sliced(equals + 1).trimmed();
    }
    return found;
}
