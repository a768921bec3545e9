#include "widgets/DrawnIcons.h"

#include "widgets/DrawnShapes.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Named {
    QLatin1StringView start; // of the icon name
    DrawnShape shape;
};

// Looked through in order: a special name stands before the general one that it starts with.
constexpr std::array shapes {
    Named { "folder-new"_L1, DrawnShape::NewFolder },
    Named { "folder"_L1, DrawnShape::Folder },
    Named { "inode-directory"_L1, DrawnShape::Folder },
    Named { "user-home"_L1, DrawnShape::Folder },
    Named { "inode-symlink-broken"_L1, DrawnShape::BrokenLink },
    Named { "inode-symlink"_L1, DrawnShape::Link },
    Named { "emblem-symbolic-link"_L1, DrawnShape::Link },
    Named { "inode-"_L1, DrawnShape::Device },
    Named { "drive-"_L1, DrawnShape::Device },
    Named { "media-"_L1, DrawnShape::Device },
    Named { "text-x-script"_L1, DrawnShape::Program },
    Named { "text-"_L1, DrawnShape::Text },
    Named { "x-office-"_L1, DrawnShape::Text },
    Named { "image-"_L1, DrawnShape::Image },
    Named { "audio-"_L1, DrawnShape::Audio },
    Named { "video-"_L1, DrawnShape::Video },
    Named { "application-zip"_L1, DrawnShape::Archive },
    Named { "application-gzip"_L1, DrawnShape::Archive },
    Named { "application-x-compressed"_L1, DrawnShape::Archive },
    Named { "application-x-tar"_L1, DrawnShape::Archive },
    Named { "application-x-bzip"_L1, DrawnShape::Archive },
    Named { "application-x-xz"_L1, DrawnShape::Archive },
    Named { "application-x-7z"_L1, DrawnShape::Archive },
    Named { "application-x-archive"_L1, DrawnShape::Archive },
    Named { "package-x-generic"_L1, DrawnShape::Package },
    Named { "application-vnd.debian"_L1, DrawnShape::Package },
    Named { "application-x-rpm"_L1, DrawnShape::Package },
    Named { "application-x-executable"_L1, DrawnShape::Program },
    Named { "application-x-sharedlib"_L1, DrawnShape::Program },
    Named { "application-x-generic"_L1, DrawnShape::Document },
    Named { "edit-copy"_L1, DrawnShape::Copy },
    Named { "edit-move"_L1, DrawnShape::Move },
    Named { "go-jump"_L1, DrawnShape::Move },
    Named { "edit-delete"_L1, DrawnShape::Delete },
    Named { "user-trash"_L1, DrawnShape::Delete },
    Named { "edit-rename"_L1, DrawnShape::Rename },
    Named { "document-edit"_L1, DrawnShape::Rename },
    Named { "view-refresh"_L1, DrawnShape::Reload },
    Named { "go-up"_L1, DrawnShape::Up },
    Named { "dialog-information"_L1, DrawnShape::Notice },
    Named { "dialog-error"_L1, DrawnShape::Fault },
};

std::optional<DrawnShape> shapeOf(const QString &name)
{
    for (const Named &named : shapes) {
        if (name.startsWith(named.start))
            return named.shape;
    }
    return std::nullopt;
}

class DrawnIconEngine final : public QIconEngine {
public:
    explicit DrawnIconEngine(DrawnShape shape)
        : _shape(shape)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = painter->device()->devicePixelRatioF();
        QPixmap drawn = pixmap(rect.size() * scale, mode, QIcon::Off);
        drawn.setDevicePixelRatio(scale);
        painter->drawPixmap(rect, drawn);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        const QPalette::ColorRole role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        const QColor ink = palette.color(QPalette::Active, role);
        const bool dark = palette.color(QPalette::Base).lightness() < 128;
        const QString key = u"twinleaf-%1-%2x%3-%4-%5-%6"_s.arg(int(_shape))
                                .arg(size.width())
                                .arg(size.height())
                                .arg(int(mode))
                                .arg(ink.rgba())
                                .arg(dark);
        QPixmap result;
        if (QPixmapCache::find(key, &result))
            return result;
        result = QPixmap(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        painter.setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled)
            painter.setOpacity(0.4);
        const qreal side = qMin(size.width(), size.height());
        painter.translate((size.width() - side) / 2, (size.height() - side) / 2);
        painter.scale(side / drawnShapeGrid, side / drawnShapeGrid);
        drawShape(painter, _shape, ink, dark);
        painter.end();
        QPixmapCache::insert(key, result);
        return result;
    }

    QIconEngine *clone() const override { return new DrawnIconEngine(*this); }
    QString key() const override { return u"twinleaf-drawn"_s; }

private:
    DrawnShape _shape;
};

} // namespace

QIcon drawnIcon(const QString &name)
{
    const auto shape = shapeOf(name);
    return shape ? QIcon(new DrawnIconEngine(*shape)) : QIcon();
}
