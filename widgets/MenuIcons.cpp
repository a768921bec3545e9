#include "widgets/MenuIcons.h"

#include "widgets/PathIcons.h"

#include <QIconEngine>
#include <QMenu>
#include <QPainter>

namespace {

// Draws what is known of the path now.
class PathIconEngine final : public QIconEngine {
public:
    PathIconEngine(PathIcons &pathIcons, QString path, QIcon general)
        : icons(pathIcons)
        , _path(std::move(path))
        , _general(std::move(general))
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        now().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return now().pixmap(size, 1, mode, state);
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        // The size is in the pixels of the screen.
        return now().pixmap((QSizeF(size) / scale).toSize(), scale, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return _general.actualSize(size, mode, state);
    }
    QIconEngine *clone() const override { return new PathIconEngine(icons, _path, _general); }

private:
    QIcon now()
    {
        const PathIcons::Look look = icons.look(_path);
        return look.icon.isNull() ? _general : look.icon;
    }

    PathIcons &icons;
    const QString _path;
    const QIcon _general;
};

} // namespace

MenuIcons::MenuIcons(QMenu &menu, PathIcons &pathIcons)
    : icons(pathIcons)
{
    QObject::connect(&icons, &PathIcons::arrived, &menu, [&menu] { menu.update(); });
}

QIcon MenuIcons::icon(const QString &path, const QIcon &general) const
{
    return QIcon(new PathIconEngine(icons, path, general));
}
