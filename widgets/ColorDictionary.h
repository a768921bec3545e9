#pragma once

#include <QColor>
#include <QVariantMap>

// A colour as the settings hold it: "Red", "Green", "Blue", "Alpha", floats from 0 to 1; what is
// missing or no number counts as 0. Any thread.
QColor colorOfDictionary(const QVariantMap &dictionary);
