#include "window/NoticeLabel.h"

#include "widgets/Colors.h"

#include <QAccessible>
#include <QEvent>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 8; // pixels
constexpr int AboveEdge = 96; // pixels: clear of the info bars and the button row
constexpr std::chrono::seconds ReadingTime { 8 };

} // namespace

NoticeLabel::NoticeLabel(QWidget *window)
    : QLabel(window)
{
    setTextFormat(Qt::PlainText);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setMargin(Margin);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QWidget::hide();
    window->installEventFilter(this);
    _end.setSingleShot(true);
    _end.setInterval(ReadingTime);
    _end.callOnTimeout(this, [this] {
        if (!_isShown)
            QWidget::hide();
    });
}

void NoticeLabel::show(const QString &line)
{
    _isShown = true;
    put(line);
}

void NoticeLabel::endShow()
{
    if (!std::exchange(_isShown, false))
        return;
    if (_end.isActive())
        put(_told);
    else
        QWidget::hide();
}

void NoticeLabel::hide()
{
    _end.stop();
    _isShown = false;
    QWidget::hide();
}

void NoticeLabel::put(const QString &line)
{
    _line = line;
    setAccessibleName(line);
    place();
    raise();
    QLabel::show();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void NoticeLabel::tell(const QString &line)
{
    _told = line;
    _end.start();
    if (!_isShown)
        put(line);
}

bool NoticeLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && isVisible())
        place();
    return QLabel::eventFilter(watched, event);
}

void NoticeLabel::place()
{
    const QSize room = parentWidget()->size();
    setText(fontMetrics().elidedText(_line, Qt::ElideMiddle, room.width() - 6 * Margin));
    resize(sizeHint());
    move((room.width() - width()) / 2, room.height() - AboveEdge - height());
}
