#pragma once

#include <QPixmap>

// The nine pieces of the window's background, by name ("flat_top_left", "middle_right", ...), drawn
// for a window colour at a device pixel ratio and kept. The plain set has the stronger shading.
// Null for an unknown name. Main thread.
QPixmap backgroundPiece(const QString &name, const QColor &window, double devicePixelRatio);

inline constexpr int BackgroundTopHeight = 64;
inline constexpr int BackgroundBottomHeight = 56;
inline constexpr int BackgroundSideWidth = 12;
