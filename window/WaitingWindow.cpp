#include "window/WaitingWindow.h"

#include "base/Arrivals.h"
#include "window/MainWindowLayout.h"
#include "window/NoticeLabel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QThread>
#include <QWindow>

#include <memory>
#include <utility>

// The shortcuts' part of a key, which the toolkit itself goes through before it sends the event;
// its only door for a key that comes later, declared for the keys of its test library.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject *receiver, ulong timestamp, int key,
                                               Qt::KeyboardModifiers modifiers, const QString &text,
                                               bool repeats, ushort count);
QT_END_NAMESPACE

namespace {

bool isInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::Close:
        return true;
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent &>(event).buttons() != Qt::NoButton;
    default:
        return false;
    }
}

// The key, or the button below zero.
int pressed(const QEvent &event)
{
    if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease)
        return static_cast<const QKeyEvent &>(event).key();
    return -int(static_cast<const QMouseEvent &>(event).button());
}

int eventLoopLevel()
{
    return QThread::currentThread()->loopLevel();
}

QWindow *windowOf(QObject *receiver)
{
    if (const auto *widget = qobject_cast<QWidget *>(receiver))
        return widget->window()->windowHandle();
    return qobject_cast<QWindow *>(receiver);
}

// The toolkit asks before it sends; here a sheet may have opened since.
bool isBehindSheet(QObject *receiver)
{
    const QWidget *sheet = QApplication::activeModalWidget();
    return sheet && windowOf(receiver) != sheet->windowHandle();
}

} // namespace

WaitingWindow::WaitingWindow(MainWindowLayout &window, Waiting &waits)
    : notice(*window.notice)
    , waiting(waits)
{
    waiting.setDisplay(this);
    qApp->installEventFilter(this);
}

WaitingWindow::~WaitingWindow()
{
    waiting.setDisplay(nullptr);
}

void WaitingWindow::showWaiting(const QString &text)
{
    notice.show(text);
}

void WaitingWindow::endWaiting(bool answered, const QString &told)
{
    const bool isByItself = Arrivals::isDelivering() && eventLoopLevel() != _deliveryLevel;
    if (!answered && !isByItself)
        ++_failures;
    notice.endShow();
    if (!told.isEmpty())
        notice.tell(told);
}

bool WaitingWindow::eventFilter(QObject *receiver, QEvent *event)
{
    if (!Arrivals::areHeld() || !isInput(*event)
        || !(receiver->isWindowType() || receiver->isWidgetType())
        || eventLoopLevel() == _deliveryLevel)
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept(); // the key itself comes next
        return true;
    }
    const bool escapes = event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && waiting.isShown();
    if (escapes)
        waiting.giveUp();
    else
        keep(receiver, *event);
    event->setAccepted(event->type() != QEvent::Close);
    return true;
}

void WaitingWindow::keep(QObject *receiver, const QEvent &event)
{
    const QPointer<QObject> to(receiver);
    const std::shared_ptr<QEvent> kept(event.clone());
    Arrivals::deliver(this, [this, to, kept, failures = _failures] {
        if (isMeant(*kept, failures) && to && !isBehindSheet(to))
            deliver(to, *kept);
    });
}

// What is pressed when its turn comes is also let go: a release goes the way of its press.
bool WaitingWindow::isMeant(const QEvent &event, int failures)
{
    const bool isCurrent = failures == _failures;
    switch (event.type()) {
    case QEvent::Close:
        return true;
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (isCurrent)
            _droppedPresses.remove(pressed(event));
        else
            _droppedPresses.insert(pressed(event));
        return isCurrent;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
        return !_droppedPresses.remove(pressed(event));
    default:
        return isCurrent;
    }
}

void WaitingWindow::deliver(QObject *receiver, QEvent &event)
{
    const int level = std::exchange(_deliveryLevel, eventLoopLevel());
    bool isShortcut = false;
    if (event.type() == QEvent::KeyPress) {
        const auto &key = static_cast<QKeyEvent &>(event);
        const QWindow *window = qobject_cast<QWindow *>(receiver);
        QObject *focus = window ? window->focusObject() : receiver;
        isShortcut = qt_sendShortcutOverrideEvent(focus ? focus : receiver, key.timestamp(),
                                                  key.key(), key.modifiers(), key.text(),
                                                  key.isAutoRepeat(), ushort(key.count()));
    }
    if (!isShortcut)
        QCoreApplication::sendEvent(receiver, &event);
    _deliveryLevel = level;
}
