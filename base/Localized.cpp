#include "base/Localized.h"

#include <QCoreApplication>

namespace {

constexpr qsizetype PlaceholderSize = 2;

// Fills the first placeholder at or after `from` and answers where the text behind it begins.
qsizetype fill(QString &text, QStringView placeholder, QStringView argument, qsizetype from = 0)
{
    const qsizetype at = text.indexOf(placeholder, from);
    if (at < 0)
        return text.size();
    text.replace(at, PlaceholderSize, argument.data(), argument.size());
    return at + argument.size();
}

} // namespace

QString localized(const char *english)
{
    return QCoreApplication::translate("Twinleaf", english);
}

QString filled(const QString &format, const QString &argument)
{
    QString text = format;
    fill(text, u"%@", argument);
    return text;
}

QString filled(const QString &format, int argument)
{
    QString text = format;
    fill(text, u"%i", QString::number(argument));
    return text;
}

QString filled(const QString &format, const QString &first, const QString &second)
{
    QString text = format;
    const qsizetype behind = fill(text, u"%@", first);
    fill(text, u"%@", second, behind);
    return text;
}
