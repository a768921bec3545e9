#include "platform/desktop/ColorScheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>
#include <QStyle>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const auto service = u"org.freedesktop.portal.Desktop"_s;
const auto object = u"/org/freedesktop/portal/desktop"_s;
const auto interface = u"org.freedesktop.portal.Settings"_s;
const auto appearance = u"org.freedesktop.appearance"_s;
const auto colorScheme = u"color-scheme"_s;
constexpr uint prefersDark = 1;

struct Colours {
    QRgb window, base, alternate, text, button, dim, highlight, highlightedText, link, mid, toolTip,
        checkBox, checkBoxLines, menu, menuLines;
};

constexpr Colours darkColours { 0xff2b2d31, 0xff1f2124, 0xff26282c, 0xffe3e5e8, 0xff383b40,
                                0xff7e838b, 0xff3a78d0, 0xffffffff, 0xff7db0f5, 0xff45484e,
                                0xff3c3f45, 0xff1f2124, 0xffafb6c0, 0xff33363b, 0xff767b85 };
constexpr Colours lightColours { 0xfff1f2f4, 0xffffffff, 0xfff6f7f9, 0xff1c1e21, 0xfffafbfc,
                                 0xff8d939b, 0xff2f6fde, 0xffffffff, 0xff1f5fc4, 0xffc5c9cf,
                                 0xfffdfdf5, 0xffffffff, 0xfff1f2f4, 0xffffffff, 0xfff1f2f4 };

QPalette paletteOf(const Colours &colours)
{
    QPalette palette(QColor::fromRgb(colours.button), QColor::fromRgb(colours.window));
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::Mid, colours.mid);
    palette.setColor(QPalette::ToolTipBase, colours.toolTip);
    palette.setColor(QPalette::ToolTipText, colours.text);
    palette.setColor(QPalette::PlaceholderText, colours.dim);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, colours.highlightedText);
    palette.setColor(QPalette::Link, colours.link);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText }) {
        palette.setColor(role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.dim);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.mid);
    return palette;
}

void apply(const Colours &colours)
{
    QPalette palette = paletteOf(colours);
    QApplication::setPalette(palette);
    // The style makes their edge darker than this, which in a dark window is not to be seen.
    palette.setColor(QPalette::Base, colours.checkBox);
    palette.setColor(QPalette::Window, colours.checkBoxLines);
    QApplication::setPalette(palette, "QCheckBox");
    // So does a menu over a dark list. The style makes its ground a little lighter than this, and
    // its edge and lines darker.
    palette.setColor(QPalette::Base, colours.menu);
    palette.setColor(QPalette::Window, colours.menuLines);
    QApplication::setPalette(palette, "QMenu");
}

// Whether the colours on the screen are the style's own: a platform theme has given none, so that
// there is nothing of the person's choice to paint over.
bool paletteIsOurs()
{
    return QApplication::style()->name() == "fusion"_L1
        && QApplication::palette().color(QPalette::Window)
        == QApplication::style()->standardPalette().color(QPalette::Window);
}

// Without a bus running the D-Bus library would try to start one.
bool hasSessionBus()
{
    const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") || access(socket, F_OK) == 0;
}

} // namespace

ColorScheme::ColorScheme(QObject *parent)
    : QObject(parent)
{
    const QByteArray wish = qgetenv("TWINLEAF_COLOR_SCHEME");
    if (wish == "dark" || wish == "light") {
        apply(wish == "dark" ? darkColours : lightColours);
        return;
    }
    if (!paletteIsOurs())
        return;
    apply(lightColours);
    // After the first turn of the event loop: the window does not wait for the bus.
    if (hasSessionBus())
        QMetaObject::invokeMethod(this, &ColorScheme::askPortal, Qt::QueuedConnection);
}

void ColorScheme::askPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, object, interface, u"SettingChanged"_s, this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(service, object, interface, u"Read"_s);
    call << appearance << colorScheme;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            follow(reply.value().variant());
        watcher->deleteLater();
    });
}

void ColorScheme::settingChanged(const QString &space, const QString &key,
                                 const QDBusVariant &value)
{
    if (space == appearance && key == colorScheme)
        follow(value.variant());
}

void ColorScheme::follow(const QVariant &value)
{
    // The portal's older call wraps its answer twice.
    const QVariant scheme = value.metaType() == QMetaType::fromType<QDBusVariant>()
        ? value.value<QDBusVariant>().variant()
        : value;
    apply(scheme.toUInt() == prefersDark ? darkColours : lightColours);
}
