#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>

// How a picture fills the room that there is for it, in the order of the choices.
enum class ImageScaling {
    ProportionallyDown, // whole, never larger than it is
    ProportionallyUpOrDown, // whole, and as large as the room
    AxesIndependently, // the whole room
    None, // a point of the screen for each of its own
};

// In points; `ratio`: of the screen's points to those of the layout.
QSizeF scaledSize(const QSize &picture, const QSizeF &room, double ratio, ImageScaling scaling);

// The large picture, on a dark ground without a colour of its own, whatever the colours of the
// desktop: colours and brightness are seen as they are. Main thread.
class PictureView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PictureView(QWidget *parent = nullptr);

    // `size`: of the picture itself, whose image may be smaller. None of them: a message, or
    // nothing.
    void showPicture(const QPixmap &image, const QSize &size);
    void showMessage(const QString &text, const QIcon &icon = {});

    void setScaling(ImageScaling scaling);
    // The points of the screen that a picture can fill; empty where it is shown as large as it is.
    QSize bound() const;

Q_SIGNALS:
    void boundChanged();
    void keyPressed(QKeyEvent *event); // that moves nothing in here; to be accepted

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QSizeF shownSize() const;
    void layOut();
    void showCursor();

    QPixmap _image;
    QSize _size;
    QString _message;
    QIcon _icon;
    ImageScaling _scaling = ImageScaling::ProportionallyDown;
    QPoint _grabbed; // where the mouse holds the picture
};
