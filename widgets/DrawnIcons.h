#pragma once

#include <QIcon>
#include <QString>

// The program's own drawing for a freedesktop icon name, in the colours of the palette; a null icon
// for a name it has none for. Drawn from shapes at the size asked for, so sharp at any scale. Main
// thread.
QIcon drawnIcon(const QString &name);
