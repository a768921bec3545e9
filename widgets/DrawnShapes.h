#pragma once

#include <QColor>

class QPainter;

enum class DrawnShape {
    Folder,
    Document,
    Text,
    Image,
    Audio,
    Video,
    Archive,
    Program,
    Link,
    BrokenLink,
    Device,
    Package,
    Copy,
    Move,
    NewFolder,
    Delete,
    Rename,
    Reload,
    Up,
    Notice,
    Fault,
};

// The shapes are drawn on a square of this side, whatever the size on the screen.
inline constexpr int drawnShapeGrid = 16;

// Draws one icon. `ink` is the colour of the actions' strokes, `dark` whether the ground is dark.
void drawShape(QPainter &painter, DrawnShape shape, const QColor &ink, bool dark);
