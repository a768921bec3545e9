#include "window/UnifiedWindow.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "window/BackgroundPieces.h"

#include <QCloseEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int LeastSide = 150;

} // namespace

UnifiedWindow::UnifiedWindow(const UserDefaults &settings, QWidget *parent)
    : QMainWindow(parent)
    , defaults(settings)
{
    setContextMenuPolicy(Qt::NoContextMenu); // each part has its own
    readLook();
    setMinSize({});
}

void UnifiedWindow::readLook()
{
    setFlat(defaults.boolean(Settings::UseFlatUnifiedLook).value_or(false));
}

void UnifiedWindow::setFlat(bool flat)
{
    _flat = !flat;
    update();
}

void UnifiedWindow::setMinSize(const QSize &size)
{
    setMinimumSize(size.expandedTo({ LeastSide, LeastSide }));
}

void UnifiedWindow::paintEvent(QPaintEvent *)
{
    // The pieces are small and kept; no picture of the window's size is made while it is resized.
    QPainter painter(this);
    const auto piece = [this](const QString &name) {
        return backgroundPiece(_flat && !name.startsWith("middle"_L1) ? u"flat_"_s + name : name,
                               palette().color(QPalette::Window), devicePixelRatioF());
    };
    const int right = width() - BackgroundSideWidth;
    const int bottom = height() - BackgroundBottomHeight;
    const int inner = std::max(0, right - BackgroundSideWidth);
    painter.drawPixmap(0, 0, piece(u"top_left"_s));
    painter.drawTiledPixmap(BackgroundSideWidth, 0, inner, BackgroundTopHeight,
                            piece(u"top_middle"_s));
    painter.drawPixmap(right, 0, piece(u"top_right"_s));
    painter.drawPixmap(0, bottom, piece(u"bottom_left"_s));
    painter.drawTiledPixmap(BackgroundSideWidth, bottom, inner, BackgroundBottomHeight,
                            piece(u"bottom_middle"_s));
    painter.drawPixmap(right, bottom, piece(u"bottom_right"_s));
    const int between = std::max(0, bottom - BackgroundTopHeight);
    // One row high and alike all the way down: tiles are what stretching gives, without the
    // scaling.
    painter.drawTiledPixmap(0, BackgroundTopHeight, BackgroundSideWidth, between,
                            piece(u"middle_left"_s));
    painter.drawTiledPixmap(right, BackgroundTopHeight, BackgroundSideWidth, between,
                            piece(u"middle_right"_s));
}

void UnifiedWindow::closeEvent(QCloseEvent *event)
{
    // Whether the window may go is the application's to say.
    event->ignore();
    Q_EMIT closeAsked();
}
