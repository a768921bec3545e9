#pragma once

#include <QColor>
#include <QVariantMap>

class QPalette;

// `above` laid over `below`: none of it at a share of 0, nothing else at 1. Opaque. Any thread, as
// all of these.
QColor mixed(const QColor &below, const QColor &above, double share);

// Lighter (above 0) or darker by a share of the whole range: a step is as visible in light as in
// dark.
QColor shifted(const QColor &color, double share);

// Black or white, whichever can be read on this ground.
QColor readableOn(const QColor &ground);

// What makes a shape seen, and a text read by those who need high contrast; see contrast().
inline constexpr double SeenContrast = 3;
inline constexpr double EasyContrast = 7;

// How far two colours stand apart for the eye, from 1 (alike) to 21 (black and white). 3 is what a
// shape needs to be seen, 4.5 what a text needs to be read.
double contrast(const QColor &a, const QColor &b);

// The colour with as little of `towards` in it as makes this contrast with the ground, or all of
// it.
QColor standingOut(const QColor &color, const QColor &towards, const QColor &ground,
                   double leastContrast);

// Whether the desktop's colours stand as far apart as colours can: a person needs it so, and
// nothing that is painted may be paler than is easily read. As it is now; main thread.
bool isHighContrast();

// For what stands back: a share of the text's colour in the ground, and with high contrast as much
// more of it as a line needs to be seen (3 to 1) or a text to be read (7 to 1).
QColor faintLine(const QColor &ground, const QColor &text, double share);
QColor faintText(const QColor &ground, const QColor &text, double share);

// Whether windows are dark, with light texts.
bool isDark(const QPalette &palette);

// A colour as the settings hold it: "Red", "Green", "Blue", "Alpha", floats from 0 to 1; what is
// missing or no number counts as 0, above 1 as 1.
QColor colorOfDictionary(const QVariantMap &dictionary);
QVariantMap dictionaryOfColor(const QColor &color);
