#include "sheets/images/PictureView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

namespace {

constexpr QRgb Ground = 0xFF1C1C1C;
constexpr QRgb Message = 0xFFC4C4C4;
constexpr QRgb Squares[] = { 0xFFB4B4B4, 0xFFCCCCCC }; // behind what lets light through
constexpr int SquareSide = 8;
constexpr int IconSide = 48;
constexpr int Spacing = 12;
constexpr int LeastWidth = 360;
constexpr int LeastHeight = 240;

void paintSquares(QPainter &painter, const QRectF &place, const QRect &seen)
{
    static const QPixmap tile = [] {
        QPixmap pixmap(2 * SquareSide, 2 * SquareSide);
        pixmap.fill(QColor(Squares[0]));
        QPainter squares(&pixmap);
        squares.fillRect(0, 0, SquareSide, SquareSide, QColor(Squares[1]));
        squares.fillRect(SquareSide, SquareSide, SquareSide, SquareSide, QColor(Squares[1]));
        return pixmap;
    }();
    painter.drawTiledPixmap(place.toAlignedRect().intersected(seen), tile);
}

} // namespace

QSizeF scaledSize(const QSize &picture, const QSizeF &room, double ratio, ImageScaling scaling)
{
    const QSizeF real = QSizeF(picture) / ratio;
    const bool fits = real.width() <= room.width() && real.height() <= room.height();
    switch (scaling) {
    case ImageScaling::None:
        return real;
    case ImageScaling::AxesIndependently:
        return room;
    case ImageScaling::ProportionallyDown:
        if (fits)
            return real;
        [[fallthrough]];
    case ImageScaling::ProportionallyUpOrDown:
        return real.scaled(room, Qt::KeepAspectRatio);
    }
    return real;
}

PictureView::PictureView(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(LeastWidth, LeastHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureView::showPicture(const QPixmap &image, const QSize &size)
{
    const bool isAnother = size != _size;
    _image = image;
    _size = size;
    _message.clear();
    if (isAnother)
        layOut();
    viewport()->update();
}

void PictureView::showMessage(const QString &text, const QIcon &icon)
{
    _image = {};
    _size = {};
    _message = text;
    _icon = icon;
    setAccessibleDescription(text);
    layOut();
    viewport()->update();
}

void PictureView::setScaling(ImageScaling scaling)
{
    if (_scaling == scaling)
        return;
    _scaling = scaling;
    layOut();
    viewport()->update();
    Q_EMIT boundChanged();
}

QSize PictureView::bound() const
{
    if (_scaling == ImageScaling::None)
        return {};
    return maximumViewportSize() * devicePixelRatioF();
}

QSizeF PictureView::shownSize() const
{
    return scaledSize(_size, QSizeF(maximumViewportSize()), devicePixelRatioF(), _scaling);
}

void PictureView::layOut()
{
    const QSize shown = _scaling == ImageScaling::None ? shownSize().toSize() : QSize(0, 0);
    const QSize most = maximumViewportSize();
    const bool isTooLarge = shown.width() > most.width() || shown.height() > most.height();
    const auto policy = isTooLarge ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    setHorizontalScrollBarPolicy(policy);
    setVerticalScrollBarPolicy(policy);
    for (const auto &[bar, length, room] :
         { std::tuple(horizontalScrollBar(), shown.width(), viewport()->width()),
           std::tuple(verticalScrollBar(), shown.height(), viewport()->height()) }) {
        bar->setRange(0, std::max(0, length - room));
        bar->setPageStep(room);
        bar->setSingleStep(std::max(room / 10, 1));
    }
    showCursor();
}

void PictureView::showCursor()
{
    const bool canMove = horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
    viewport()->setCursor(canMove ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

bool PictureView::event(QEvent *event)
{
    if (event->type() == QEvent::ScreenChangeInternal)
        Q_EMIT boundChanged();
    return QAbstractScrollArea::event(event);
}

void PictureView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    layOut();
    Q_EMIT boundChanged();
}

void PictureView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect all = viewport()->rect();
    painter.fillRect(event->rect(), QColor(Ground));
    if (!_image.isNull()) {
        const QSizeF size = shownSize();
        // Whole points: a shift by a part of one would blur it.
        const QPointF corner(
            std::max(0, int((all.width() - size.width()) / 2)) - horizontalScrollBar()->value(),
            std::max(0, int((all.height() - size.height()) / 2)) - verticalScrollBar()->value());
        const QRectF place(corner, size);
        if (_image.hasAlphaChannel())
            paintSquares(painter, place, all);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        return painter.drawPixmap(place, _image, QRectF(_image.rect()));
    }
    painter.setPen(QColor(Message));
    const int iconHeight = _icon.isNull() || _message.isEmpty() ? 0 : IconSide + Spacing;
    QRect text = fontMetrics().boundingRect(all, Qt::AlignCenter | Qt::TextWordWrap, _message);
    text.translate(0, iconHeight / 2);
    if (iconHeight > 0)
        _icon.paint(&painter, all.center().x() - IconSide / 2, text.top() - iconHeight, IconSide,
                    IconSide);
    painter.drawText(text, Qt::AlignCenter | Qt::TextWordWrap, _message);
}

// The arrows alone lead to other pictures; with a modifier they move the one that is too large.
void PictureView::keyPressEvent(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (modifiers == Qt::ControlModifier || modifiers == Qt::ShiftModifier) {
        QKeyEvent plain(event->type(), event->key(), Qt::NoModifier);
        QAbstractScrollArea::keyPressEvent(&plain);
        event->setAccepted(plain.isAccepted());
        return;
    }
    event->ignore();
    Q_EMIT keyPressed(event);
}

void PictureView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || viewport()->cursor().shape() != Qt::OpenHandCursor)
        return QAbstractScrollArea::mousePressEvent(event);
    _grabbed = event->position().toPoint();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void PictureView::mouseMoveEvent(QMouseEvent *event)
{
    if (viewport()->cursor().shape() != Qt::ClosedHandCursor)
        return QAbstractScrollArea::mouseMoveEvent(event);
    const QPoint now = event->position().toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - (now - _grabbed).x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - (now - _grabbed).y());
    _grabbed = now;
}

void PictureView::mouseReleaseEvent(QMouseEvent *event)
{
    QAbstractScrollArea::mouseReleaseEvent(event);
    showCursor();
}
