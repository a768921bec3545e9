#include "widgets/DrawnShapes.h"

#include <QPainter>
#include <QPainterPath>

namespace {

void stroke(QPainter &painter, const QPainterPath &path, const QColor &colour, qreal width = 1.3)
{
    painter.strokePath(path, QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

QPainterPath line(std::initializer_list<QPointF> points)
{
    QPainterPath path(*points.begin());
    for (const QPointF &point : points)
        path.lineTo(point);
    return path;
}

QPainterPath rounded(qreal x, qreal y, qreal width, qreal height, qreal radius = 1)
{
    QPainterPath path;
    path.addRoundedRect(x, y, width, height, radius, radius);
    return path;
}

QPainterPath ellipse(qreal x, qreal y, qreal width, qreal height)
{
    QPainterPath path;
    path.addEllipse(x, y, width, height);
    return path;
}

void drawFolder(QPainter &painter, bool dark)
{
    QPainterPath tab = rounded(1, 2.5, 6.5, 4, 1.2);
    tab.addPath(rounded(1, 4, 14, 9.5, 1.2));
    tab.setFillRule(Qt::WindingFill);
    painter.fillPath(tab, QColor(dark ? 0x5f97d8 : 0x5b98da));
    painter.fillPath(rounded(1, 5.5, 14, 8, 1.2), QColor(dark ? 0x8fc1f4 : 0x86bcf1));
}

// A sheet of paper with a folded corner.
void drawPage(QPainter &painter, bool dark)
{
    const QColor edge(dark ? 0xb4bac3 : 0x98a1ac);
    QPainterPath page = line({ { 3, 1.5 }, { 9.5, 1.5 }, { 13, 5 }, { 13, 14.5 }, { 3, 14.5 } });
    page.closeSubpath();
    painter.fillPath(page, QColor(dark ? 0x5c626b : 0xfdfdfe));
    stroke(painter, page, edge, 1);
    stroke(painter, line({ { 9.5, 1.5 }, { 9.5, 5 }, { 13, 5 } }), edge, 1);
}

void drawText(QPainter &painter, bool dark)
{
    const QColor colour(dark ? 0xdfe3e8 : 0x7d8792);
    for (const qreal y : { 7.5, 9.5, 11.5 })
        stroke(painter, line({ { 5, y }, { y > 11 ? 9.0 : 11.0, y } }), colour, 0.9);
}

void drawImage(QPainter &painter)
{
    QPainterPath hills =
        line({ { 4.2, 12.5 }, { 6.6, 8.6 }, { 8.3, 10.8 }, { 9.5, 9.4 }, { 11.8, 12.5 } });
    hills.closeSubpath();
    painter.fillPath(hills, QColor(0x3fa66a));
    painter.fillPath(ellipse(9, 6.2, 2, 2), QColor(0xe9b23c));
}

void drawAudio(QPainter &painter)
{
    const QColor colour(0x9a5fd0);
    painter.fillPath(ellipse(4.8, 10.4, 2.6, 2.2), colour);
    painter.fillPath(ellipse(8.6, 9.6, 2.6, 2.2), colour);
    stroke(painter, line({ { 7, 11.4 }, { 7, 7 }, { 10.8, 6.2 }, { 10.8, 10.6 } }), colour, 0.9);
}

void drawVideo(QPainter &painter)
{
    QPainterPath play = line({ { 6, 6.8 }, { 11, 9.6 }, { 6, 12.4 } });
    play.closeSubpath();
    painter.fillPath(play, QColor(0xd8573f));
}

void drawArchive(QPainter &painter)
{
    const QColor colour(0xc98a2b);
    for (const qreal y : { 2.4, 4.4, 6.4, 8.4 })
        stroke(painter,
               line({ { y == 2.4 || y == 6.4 ? 6.2 : 7.4, y },
                      { y == 2.4 || y == 6.4 ? 7.2 : 8.4, y } }),
               colour, 1.1);
    painter.fillPath(rounded(5.6, 9.8, 3.4, 3.4, 0.8), colour);
}

void drawProgram(QPainter &painter, bool dark)
{
    painter.fillPath(rounded(1, 2.5, 14, 11, 1.4), QColor(dark ? 0x5d6672 : 0x46505c));
    painter.fillPath(rounded(2, 4.8, 12, 7.7, 0.6), QColor(dark ? 0x23272c : 0x20252b));
    const QColor prompt(0x7fd08a);
    stroke(painter, line({ { 3.8, 6.6 }, { 5.8, 8.4 }, { 3.8, 10.2 } }), prompt, 1.1);
    stroke(painter, line({ { 7.4, 10.4 }, { 10.4, 10.4 } }), prompt, 1.1);
}

void drawLink(QPainter &painter)
{
    const QColor colour(0x2f7fd6);
    QPainterPath arrow(QPointF(5.2, 12.4));
    arrow.cubicTo(5.2, 9.4, 7, 8.4, 10.6, 8.4);
    stroke(painter, arrow, colour, 1.3);
    stroke(painter, line({ { 8.8, 6.4 }, { 10.8, 8.4 }, { 8.8, 10.4 } }), colour, 1.3);
}

void drawBroken(QPainter &painter)
{
    const QColor colour(0xd64545);
    stroke(painter, line({ { 5.6, 7.4 }, { 10.4, 12.2 } }), colour, 1.5);
    stroke(painter, line({ { 10.4, 7.4 }, { 5.6, 12.2 } }), colour, 1.5);
}

void drawDevice(QPainter &painter, bool dark)
{
    painter.fillPath(rounded(1.5, 4.5, 13, 7.5, 1.6), QColor(dark ? 0x7c8591 : 0x8a94a0));
    painter.fillPath(rounded(1.5, 8.5, 13, 3.5, 1.4), QColor(dark ? 0x5b636d : 0x67717d));
    painter.fillPath(ellipse(11.4, 9.4, 1.7, 1.7), QColor(0x7fd08a));
}

void drawPackage(QPainter &painter, bool dark)
{
    painter.fillPath(rounded(1.8, 3, 12.4, 11, 1.2), QColor(dark ? 0xb07d46 : 0xc9935a));
    painter.fillPath(rounded(1.8, 3, 12.4, 3.6, 1.2), QColor(dark ? 0x8c6234 : 0xa87643));
    painter.fillRect(QRectF(6.8, 3, 2.4, 5.4), QColor(0xefdcc0));
}

void drawDelete(QPainter &painter, const QColor &ink)
{
    stroke(painter, line({ { 2.8, 4.2 }, { 13.2, 4.2 } }), ink);
    stroke(painter, line({ { 6, 4 }, { 6, 2.2 }, { 10, 2.2 }, { 10, 4 } }), ink);
    stroke(painter, line({ { 4.2, 4.4 }, { 4.9, 13.8 }, { 11.1, 13.8 }, { 11.8, 4.4 } }), ink);
    stroke(painter, line({ { 6.7, 6.8 }, { 6.9, 11.4 } }), ink, 1.1);
    stroke(painter, line({ { 9.3, 6.8 }, { 9.1, 11.4 } }), ink, 1.1);
}

void drawReload(QPainter &painter, const QColor &ink)
{
    QPainterPath circle;
    const QRectF bounds(3, 3, 10, 10);
    circle.arcMoveTo(bounds, 35);
    circle.arcTo(bounds, 35, 290);
    stroke(painter, circle, ink);
    stroke(painter, line({ { 12.6, 2 }, { 12.6, 5.2 }, { 9.4, 5.2 } }), ink);
}

void drawAction(QPainter &painter, DrawnShape shape, const QColor &ink)
{
    switch (shape) {
    case DrawnShape::Copy:
        stroke(painter, rounded(5.5, 5.5, 8, 8.5, 1.2), ink);
        stroke(painter,
               line({ { 3.6, 10.6 }, { 2.5, 10.6 }, { 2.5, 2 }, { 10.4, 2 }, { 10.4, 3.2 } }), ink);
        break;
    case DrawnShape::Move:
        stroke(painter, line({ { 2, 8 }, { 13.6, 8 } }), ink);
        stroke(painter, line({ { 9.4, 3.8 }, { 13.6, 8 }, { 9.4, 12.2 } }), ink);
        break;
    case DrawnShape::NewFolder:
        stroke(painter,
               line({ { 9, 13 },
                      { 1.8, 13 },
                      { 1.8, 3.2 },
                      { 6, 3.2 },
                      { 7.4, 5 },
                      { 14, 5 },
                      { 14, 8 } }),
               ink);
        stroke(painter, line({ { 12.4, 10.2 }, { 12.4, 14.8 } }), ink);
        stroke(painter, line({ { 10.1, 12.5 }, { 14.7, 12.5 } }), ink);
        break;
    case DrawnShape::Delete:
        drawDelete(painter, ink);
        break;
    case DrawnShape::Rename: {
        QPainterPath pencil =
            line({ { 2.4, 13.6 }, { 3.1, 10.4 }, { 10.9, 2.6 }, { 13.4, 5.1 }, { 5.6, 12.9 } });
        pencil.closeSubpath();
        stroke(painter, pencil, ink);
        stroke(painter, line({ { 9.2, 4.4 }, { 11.6, 6.8 } }), ink);
        break;
    }
    case DrawnShape::Reload:
        drawReload(painter, ink);
        break;
    default:
        stroke(painter, line({ { 8, 13.6 }, { 8, 2.6 } }), ink);
        stroke(painter, line({ { 3.6, 7 }, { 8, 2.6 }, { 12.4, 7 } }), ink);
        break;
    }
}

// The sign of an alert: a dot and a stroke in a disc, upside down for a fault.
void drawSign(QPainter &painter, bool fault)
{
    painter.fillPath(ellipse(1, 1, 14, 14), QColor(fault ? 0xd0453c : 0x3f7fd6));
    painter.fillPath(ellipse(7, fault ? 10.6 : 3.4, 2, 2), Qt::white);
    stroke(painter, fault ? line({ { 8, 4.4 }, { 8, 8.8 } }) : line({ { 8, 7.2 }, { 8, 11.6 } }),
           Qt::white, 1.8);
}

} // namespace

void drawShape(QPainter &painter, DrawnShape shape, const QColor &ink, bool dark)
{
    if (shape >= DrawnShape::Notice)
        return drawSign(painter, shape == DrawnShape::Fault);
    if (shape >= DrawnShape::Copy)
        return drawAction(painter, shape, ink);
    if (shape == DrawnShape::Folder)
        return drawFolder(painter, dark);
    if (shape == DrawnShape::Program)
        return drawProgram(painter, dark);
    if (shape == DrawnShape::Device)
        return drawDevice(painter, dark);
    if (shape == DrawnShape::Package)
        return drawPackage(painter, dark);

    drawPage(painter, dark);
    switch (shape) {
    case DrawnShape::Text:
        return drawText(painter, dark);
    case DrawnShape::Image:
        return drawImage(painter);
    case DrawnShape::Audio:
        return drawAudio(painter);
    case DrawnShape::Video:
        return drawVideo(painter);
    case DrawnShape::Archive:
        return drawArchive(painter);
    case DrawnShape::Link:
        return drawLink(painter);
    case DrawnShape::BrokenLink:
        return drawBroken(painter);
    default:
        return; // a document of no known kind stays a blank page
    }
}
