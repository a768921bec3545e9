#include "widgets/RoundRect.h"

QPainterPath bezierPathWithRoundRect(const QRectF &rect, double xRadius, double yRadius)
{
    constexpr double Handle = 0.5522847771644592; // of the radius: nearest to a quarter ellipse
    const double rx = qMin(xRadius, rect.width() / 2);
    const double ry = qMin(yRadius, rect.height() / 2);
    const double hx = rx * Handle;
    const double hy = ry * Handle;
    const double left = rect.left();
    const double top = rect.top();
    const double right = left + rect.width();
    const double bottom = top + rect.height();

    QPainterPath path(QPointF(left + rx, top));
    path.lineTo(right - rx, top);
    path.cubicTo(right - rx + hx, top, right, top + ry - hy, right, top + ry);
    path.lineTo(right, bottom - ry);
    path.cubicTo(right, bottom - ry + hy, right - rx + hx, bottom, right - rx, bottom);
    path.lineTo(left + rx, bottom);
    path.cubicTo(left + rx - hx, bottom, left, bottom - ry + hy, left, bottom - ry);
    path.lineTo(left, top + ry);
    path.cubicTo(left, top + ry - hy, left + rx - hx, top, left + rx, top);
    path.closeSubpath();
    return path;
}
