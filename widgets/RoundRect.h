#pragma once

#include <QPainterPath>

// A closed rounded rectangle; radii are limited to half the sides. Any thread.
inline QPainterPath bezierPathWithRoundRect(const QRectF &rect, double xRadius, double yRadius)
{
    QPainterPath path;
    path.addRoundedRect(rect, xRadius, yRadius);
    return path;
}
