#pragma once

#include <QPainterPath>

// A closed rounded rectangle; radii are limited to half the sides. Any thread.
QPainterPath bezierPathWithRoundRect(const QRectF &rect, double xRadius, double yRadius);
