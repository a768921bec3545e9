#include "operations/ShortenedLines.h"

#include "base/Localized.h"

QString shortened(const QStringList &lines)
{
    constexpr qsizetype MostLines = 12;
    QString text = lines.mid(0, MostLines).join(u'\n');
    if (lines.size() > MostLines)
        text += u'\n' + filled(localized("and %i more"), int(lines.size() - MostLines));
    return text;
}
