#include "platform/desktop/StartupToken.h"

#include "platform/desktop/XAtom.h"

#include <QApplication>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr qsizetype Longest = 500;
constexpr char WaylandVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char X11Variable[] = "DESKTOP_STARTUP_ID";

// Of the person's click, in the id's last part; 0 when it does not say.
quint32 timeIn(const QByteArray &token)
{
    const qsizetype at = token.lastIndexOf("_TIME");
    return at < 0 ? 0 : token.mid(at + 5).toUInt();
}

xcb_window_t rootOf(xcb_connection_t *x, xcb_window_t window)
{
    xcb_get_geometry_reply_t *reply =
        xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr);
    const xcb_window_t root = reply ? reply->root : xcb_window_t(XCB_NONE);
    std::free(reply);
    return root;
}

// Startup Notification Protocol: a text in messages of twenty bytes.
void endStartup(xcb_connection_t *x, xcb_window_t root, xcb_window_t window,
                const QByteArray &token)
{
    const QByteArray text = "remove: ID=" + token + '\0';
    xcb_client_message_event_t event { .response_type = XCB_CLIENT_MESSAGE,
                                       .format = 8,
                                       .window = window,
                                       .type = xAtom(x, "_NET_STARTUP_INFO_BEGIN") };
    const xcb_atom_t further = xAtom(x, "_NET_STARTUP_INFO");
    constexpr qsizetype Piece = sizeof event.data.data8;
    for (qsizetype at = 0; at < text.size(); at += Piece) {
        std::memset(event.data.data8, 0, Piece);
        std::memcpy(event.data.data8, text.constData() + at,
                    size_t(std::min(Piece, text.size() - at)));
        xcb_send_event(x, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&event));
        event.type = further;
    }
}

// Extended Window Manager Hints: with the time of the click, which the toolkit does not know of; a
// manager that keeps windows from taking the keyboard lets this one.
void activate(xcb_connection_t *x, xcb_window_t root, xcb_window_t window, quint32 time)
{
    constexpr uint32_t ByApplication = 1;
    xcb_client_message_event_t event { .response_type = XCB_CLIENT_MESSAGE,
                                       .format = 32,
                                       .window = window,
                                       .type = xAtom(x, "_NET_ACTIVE_WINDOW") };
    event.data.data32[0] = ByApplication;
    event.data.data32[1] = time;
    xcb_send_event(x, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
}

void useOnX11(QWidget &window, const QByteArray &token)
{
    const auto *native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!native || token.isEmpty())
        return;
    xcb_connection_t *x = native->connection();
    const auto id = xcb_window_t(window.winId());
    const xcb_window_t root = rootOf(x, id);
    if (const quint32 time = timeIn(token))
        activate(x, root, id, time);
    endStartup(x, root, id, token);
    xcb_flush(x);
}

} // namespace

QByteArray StartupToken::takeFromEnvironment()
{
    QByteArray token = checked(qEnvironmentVariable(WaylandVariable));
    if (token.isEmpty())
        token = checked(qEnvironmentVariable(X11Variable));
    qunsetenv(WaylandVariable);
    return token;
}

QByteArray StartupToken::checked(const QVariant &word)
{
    const QByteArray token = word.toString().toUtf8();
    // Nothing that would need quotes in a message.
    const bool isWord =
        token.size() <= Longest && std::ranges::all_of(token, [](char letter) {
            return letter > ' ' && letter < '\x7F' && letter != '"' && letter != '\\';
        });
    return isWord ? token : QByteArray();
}

void StartupToken::bringForward(QWidget &window, const QByteArray &token)
{
    if (!window.isVisible())
        return; // it is about to come up by itself
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    QWidget *sheet = QApplication::activeModalWidget();
    QWidget &top = sheet ? *sheet : window;
    if (QGuiApplication::platformName().startsWith(QLatin1StringView("wayland"))
        && !token.isEmpty())
        qputenv(WaylandVariable, token); // where the toolkit looks for it, and takes it out
    top.raise();
    top.activateWindow();
    qunsetenv(WaylandVariable);
    useOnX11(top, token);
}
