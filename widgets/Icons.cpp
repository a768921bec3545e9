#include "widgets/Icons.h"

#include "widgets/Colors.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QLoggingCategory>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(iconLog, "twinleaf.icons")

constexpr double DisabledOpacity = 0.4;
constexpr double DisabledOpacityInContrast = 0.7;

enum class IconPlace { Menu, Button };

// What reads the drawings is a plug-in, and a package, of its own.
bool canDraw()
{
    static const bool can = [] {
        const bool reads = QImageReader::supportedImageFormats().contains("svg");
        if (!reads)
            qCWarning(iconLog, "no icons are drawn without the toolkit's SVG plug-in (libqt6svg6)");
        return reads;
    }();
    return can;
}

// The drawing in resources, read when it is first painted. The toolkit's own engine for such files
// would paint their strokes in black whatever the palette.
class DrawnIconEngine final : public QIconEngine {
public:
    DrawnIconEngine(const QString &file, IconPlace place)
        : _file(file)
        , _place(place)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn = pixmap(rect.size() * painter->device()->devicePixelRatioF(), mode, state);
        painter->drawPixmap(rect, drawn);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        // Active: of what is under the pointer; a menu item then stands on the colour of a
        // selection.
        const bool onSelection =
            mode == QIcon::Selected || (mode == QIcon::Active && _place == IconPlace::Menu);
        const QColor ink = QGuiApplication::palette().color(
            QPalette::Active, onSelection ? QPalette::HighlightedText : QPalette::WindowText);
        const double opacity = mode != QIcon::Disabled ? 1
            : isHighContrast()                         ? DisabledOpacityInContrast
                                                       : DisabledOpacity;
        const QString key = u"%1 %2x%3 %4 %5"_s.arg(_file)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(ink.name())
                                .arg(opacity);
        QPixmap result;
        if (QPixmapCache::find(key, &result))
            return result;
        result = QPixmap(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        painter.setOpacity(opacity);
        const QImage drawn = image(qMin(size.width(), size.height()), ink);
        painter.drawImage(QRect(QPoint(), size).center() - drawn.rect().center(), drawn);
        painter.end();
        QPixmapCache::insert(key, result);
        return result;
    }

    QIconEngine *clone() const override { return new DrawnIconEngine(*this); }

private:
    QImage image(int side, const QColor &ink) const
    {
        if (!canDraw())
            return {};
        QFile file(_file);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QByteArray drawing = file.readAll().replace("currentColor", ink.name().toLatin1());
        QBuffer buffer(&drawing);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize({ side, side });
        QImage image = reader.read();
        if (image.isNull())
            qCWarning(iconLog) << _file << reader.errorString();
        return image;
    }

    QString _file;
    IconPlace _place;
};

// By the desktop's rule for names: "text-x-csrc", else "text-x", else "text". Null where nothing is
// drawn for any of them.
QIcon drawnIcon(QString name)
{
    while (!name.isEmpty()) {
        if (const QString file = u":/icons/%1.svg"_s.arg(name); QFile::exists(file))
            return QIcon(new DrawnIconEngine(file, IconPlace::Menu));
        name.truncate(std::max<qsizetype>(0, name.lastIndexOf(u'-')));
    }
    return {};
}

} // namespace

// A static library's resources are registered by who uses them.
static void registerDrawings()
{
    [[maybe_unused]] static const bool registered = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
}

QIcon toolbarIcon(const QString &image)
{
    registerDrawings();
    return QIcon(new DrawnIconEngine(u":/icons/toolbar/%1.svg"_s.arg(image), IconPlace::Button));
}

QIcon themedIcon(const QString &name, const QString &fallback)
{
    registerDrawings();
    for (const QString &candidate : { name, fallback }) {
        if (!candidate.isEmpty() && QIcon::hasThemeIcon(candidate))
            return QIcon::fromTheme(candidate);
    }
    for (const QString &candidate : { name, fallback, u"application-x-generic"_s }) {
        if (QIcon icon = drawnIcon(candidate); !icon.isNull())
            return icon;
    }
    return {};
}

QIcon applicationIcon(const QIcon &own)
{
    return own.isNull() ? themedIcon(u"application-x-executable"_s) : own;
}
