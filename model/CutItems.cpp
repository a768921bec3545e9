#include "model/CutItems.h"

void CutItems::set(const QStringList &paths)
{
    if (_paths.isEmpty() && paths.isEmpty())
        return;
    _paths = QSet<QString>(paths.cbegin(), paths.cend());
    Q_EMIT changed();
}
