#include "platform/desktop/ColorScheme.h"

#include "platform/desktop/GtkSettings.h"
#include "platform/desktop/SchemePalettes.h"
#include "widgets/Colors.h"

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

const auto appearance = u"org.freedesktop.appearance"_s;
const auto colorScheme = u"color-scheme"_s;
const auto moreContrast = u"contrast"_s;
const auto xfceChannel = u"xsettings"_s;
const auto xfceTheme = u"/Net/ThemeName"_s;

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

std::optional<Appearance> fixedAppearance()
{
    const QByteArray wish = qgetenv("TWINLEAF_COLOR_SCHEME");
    if (wish == "dark" || wish == "light" || wish == "dark-contrast" || wish == "light-contrast")
        return Appearance { wish.startsWith("dark"), wish.endsWith("-contrast") };
    return {};
}

// The portal's older call wraps its answer twice.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

ColorScheme::ColorScheme(QObject *parent)
    : QObject(parent)
{
    if (const auto fixed = fixedAppearance()) {
        showAppearance(*fixed);
        return;
    }
    if (paletteIsOurs())
        showAppearance(_shown.emplace());
    // After the first turn of the event loop: the window does not wait for the bus.
    if (hasSessionBus())
        QMetaObject::invokeMethod(this, &ColorScheme::askDesktop, Qt::QueuedConnection);
}

void ColorScheme::askDesktop()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    _gtk = new GtkSettings(this);
    connect(_gtk, &GtkSettings::changed, this, &ColorScheme::follow);
    follow();

    const auto portal = u"org.freedesktop.portal.Desktop"_s;
    const auto desktop = u"/org/freedesktop/portal/desktop"_s;
    const auto settings = u"org.freedesktop.portal.Settings"_s;
    // The library knows it by name only after the first message; until then no slot that takes one
    // is found.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portal, desktop, settings, u"SettingChanged"_s, this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    for (const QString &key : { colorScheme, moreContrast }) {
        QDBusMessage question =
            QDBusMessage::createMethodCall(portal, desktop, settings, u"Read"_s);
        question << appearance << key;
        ask(question);
    }

    const auto xfce = u"org.xfce.Xfconf"_s;
    const auto channels = u"/org/xfce/Xfconf"_s;
    bus.connect(xfce, channels, xfce, u"PropertyChanged"_s, this,
                SLOT(propertyChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(xfce, channels, xfce, u"GetProperty"_s);
    question << xfceChannel << xfceTheme;
    question.setAutoStartService(false); // another desktop has no use for it
    ask(question);
}

void ColorScheme::ask(const QDBusMessage &question)
{
    auto *watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    const QString space = question.arguments()[0].toString();
    const QString key = question.arguments()[1].toString();
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        // News can overtake an answer, which is then the older one.
        if (reply.isValid() && !_changed.contains(key))
            take(space, key, reply.value().variant());
        watcher->deleteLater();
    });
}

void ColorScheme::settingChanged(const QString &space, const QString &key,
                                 const QDBusVariant &value)
{
    _changed.insert(key);
    take(space, key, value.variant());
}

void ColorScheme::propertyChanged(const QString &channel, const QString &property,
                                  const QDBusVariant &value)
{
    _changed.insert(property);
    take(channel, property, value.variant());
}

void ColorScheme::take(const QString &space, const QString &key, const QVariant &value)
{
    const QVariant told = unwrapped(value);
    if (space == appearance && key == colorScheme)
        _scheme = told.toUInt();
    else if (space == appearance && key == moreContrast)
        _contrast = told.toUInt() == 1;
    else if (space == xfceChannel && key == xfceTheme)
        _xfceTheme = told.toString();
    else
        return;
    follow();
}

void ColorScheme::follow()
{
    AppearanceSigns signs = _gtk->signs();
    if (_scheme != AppearanceSigns::NoWish)
        signs.scheme = _scheme;
    signs.contrast |= _contrast;
    if (!_xfceTheme.isEmpty()) {
        signs.theme = _xfceTheme;
        signs.darkVariant = false;
    }
    const Appearance wished = appearanceOf(signs);
    const bool isFulfilled = _shown ? *_shown == wished
                                    : !wished.highContrast
            && (signs.scheme == AppearanceSigns::NoWish
                || isDark(QApplication::palette()) == wished.isDark);
    if (isFulfilled)
        return;
    _shown = wished;
    showAppearance(wished);
}
