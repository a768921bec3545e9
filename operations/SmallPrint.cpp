#include "operations/SmallPrint.h"

#include "files/FileName.h"
#include "platform/Alerts.h"

using namespace Qt::StringLiterals;

QString shortened(const QStringList &lines)
{
    constexpr qsizetype MostLines = 12;
    constexpr qsizetype LongestLine = 400; // letters; the end of a path tells as much as its start
    QStringList shown = lines.mid(0, MostLines);
    for (QString &line : shown)
        if (line.size() > LongestLine)
            line = line.left(LongestLine / 2) + u'…' + line.right(LongestLine / 2);
    QString text = shown.join(u'\n');
    if (lines.size() > MostLines)
        text += u'\n' + filled(localized("and %i more"), int(lines.size() - MostLines));
    return text;
}

Alert remark(const QString &text, const QStringList &lines)
{
    Alert alert = Alert::failure(text, shortened(lines));
    alert.style = Alert::Style::Informational;
    return alert;
}

QString lineAbout(const QString &name, const QString &reason)
{
    return FileName::shown(name) + u": "_s + reason;
}

QStringList shownLines(const QString &text)
{
    QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    for (QString &line : lines)
        line = FileName::shown(line);
    return lines;
}
