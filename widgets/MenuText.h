#pragma once

#include "files/FileName.h"

// A name as the text of a menu item: plain, its "&" no mark of a key, its tab none before one.
inline QString menuText(const QString &name)
{
    return FileName::shown(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}
