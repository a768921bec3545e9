#include "platform/desktop/SessionEnd.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QEvent>
#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto service = u"org.freedesktop.login1"_s;
const auto object = u"/org/freedesktop/login1"_s;
const auto interface = u"org.freedesktop.login1.Manager"_s;

// The session, its terminal, Ctrl+C in it.
constexpr int Endings[] = { SIGTERM, SIGHUP, SIGINT };

// What the signal handler may touch: nothing but a number to write to.
volatile std::sig_atomic_t signalPipe = -1;

void signalCame(int)
{
    const int kept = errno;
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(signalPipe, &one, sizeof one);
    errno = kept;
}

} // namespace

SessionEnd::SessionEnd(QObject *parent)
    : QObject(parent)
{
    watchSignals();
    QCoreApplication::instance()->installEventFilter(this);
    // Well after the first turn of the event loop: the window's first paint does not wait for the
    // bus.
    QTimer::singleShot(200ms, this, &SessionEnd::watchLogin);
}

SessionEnd::~SessionEnd()
{
    letShutdownGoOn();
    if (_signals < 0)
        return;
    for (const int signal : Endings)
        std::signal(signal, SIG_DFL);
    signalPipe = -1;
    delete findChild<QSocketNotifier *>();
    close(_signals);
}

void SessionEnd::watchSignals()
{
    _signals = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (_signals < 0)
        return;
    signalPipe = _signals;
    auto *notifier = new QSocketNotifier(_signals, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SessionEnd::readSignal);
    struct sigaction action { };
    action.sa_handler = signalCame;
    action.sa_flags = SA_RESTART;
    for (const int signal : Endings)
        sigaction(signal, &action, nullptr);
}

void SessionEnd::readSignal()
{
    quint64 count = 0;
    if (read(_signals, &count, sizeof count) != sizeof count)
        return;
    end();
}

bool SessionEnd::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return QObject::eventFilter(watched, event);
    end(); // the session manager has said so
    return true;
}

void SessionEnd::end()
{
    Q_EMIT willEnd();
    // Not quit(): that asks the windows, and nobody is there any more to answer.
    QCoreApplication::exit(0);
}

void SessionEnd::watchLogin()
{
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, object, interface, u"PrepareForShutdown"_s, this,
                SLOT(prepareForShutdown(bool)));
    delayShutdown();
}

void SessionEnd::delayShutdown()
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, object, interface, u"Inhibit"_s);
    call << u"shutdown"_s << u"Twinleaf"_s << u"Saving the settings"_s << u"delay"_s;
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        if (reply.isValid()) {
            letShutdownGoOn();
            _inhibitor = fcntl(reply.value().fileDescriptor(), F_DUPFD_CLOEXEC, 0);
        }
        watcher->deleteLater();
    });
}

void SessionEnd::letShutdownGoOn()
{
    if (_inhibitor >= 0)
        close(_inhibitor);
    _inhibitor = -1;
}

void SessionEnd::prepareForShutdown(bool begins)
{
    if (begins) {
        Q_EMIT willEnd();
        letShutdownGoOn();
    } else {
        delayShutdown();
    }
}
