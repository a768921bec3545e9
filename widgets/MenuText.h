#pragma once

#include "files/FileName.h"

#include <QTextDocument>

// A name as the text of a menu item: plain, its "&" no mark of a key, its tab none before one.
inline QString menuText(const QString &name)
{
    return FileName::shown(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A text as a tool tip: no name in it is taken for markup, and a long one is broken into lines.
inline QString plainToolTip(const QString &text)
{
    constexpr qsizetype LongestLine = 80;
    if (text.size() <= LongestLine && !Qt::mightBeRichText(text))
        return text;
    return QLatin1String("<span>")
        + text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"))
        + QLatin1String("</span>");
}
