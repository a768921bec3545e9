#include "window/BackgroundPieces.h"

#include "widgets/Colors.h"

#include <QHash>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmapCache>

using namespace Qt::StringLiterals;

namespace {

// Alike along its whole width; the wider, the fewer tiles are set side by side.
constexpr int EdgeWidth = 128;

struct Piece {
    QSize size;
    bool top = false;
    bool bottom = false;
};

std::optional<Piece> pieceOf(const QString &part)
{
    const bool top = part.startsWith("top_"_L1);
    const bool bottom = part.startsWith("bottom_"_L1);
    const int height = top ? BackgroundTopHeight : bottom ? BackgroundBottomHeight : 1;
    if (!top && !bottom && !part.startsWith("middle_"_L1))
        return std::nullopt;
    if (part.endsWith("_left"_L1) || part.endsWith("_right"_L1))
        return Piece { { BackgroundSideWidth, height }, top, bottom };
    if (part.endsWith("_middle"_L1))
        return Piece { { EdgeWidth, height }, top, bottom };
    return std::nullopt;
}

} // namespace

QPixmap backgroundPiece(const QString &name, const QColor &window, double devicePixelRatio)
{
    const QString key =
        u"twinleaf-background-%1-%2-%3"_s.arg(name).arg(window.rgba()).arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    const bool flat = name.startsWith("flat_"_L1);
    const auto piece = pieceOf(flat ? name.mid(5) : name);
    if (!piece)
        return {};
    const double strength = flat ? 0.02 : 0.06;
    pixmap = QPixmap(piece->size * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QLinearGradient shade(0, 0, 0, piece->size.height());
    shade.setColorAt(0, piece->top ? shifted(window, strength) : window);
    shade.setColorAt(1, piece->bottom ? shifted(window, -strength) : window);
    QPainter painter(&pixmap);
    painter.fillRect(QRect(QPoint(), piece->size), shade);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}
