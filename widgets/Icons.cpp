#include "widgets/Icons.h"

#include "widgets/DrawnIcons.h"

QIcon themedIcon(const QString &name, const QString &fallback)
{
    for (const QString &candidate : { name, fallback }) {
        if (!candidate.isEmpty() && QIcon::hasThemeIcon(candidate))
            return QIcon::fromTheme(candidate);
    }
    QIcon icon = drawnIcon(name);
    if (icon.isNull() && !fallback.isEmpty())
        icon = drawnIcon(fallback);
    return icon.isNull() ? drawnIcon(QStringLiteral("application-x-generic")) : icon;
}
