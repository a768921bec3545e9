#pragma once

#include "platform/desktop/StartupToken.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

class ShowDesk;

// This program as the desktop and a later start of it speak to it on the session's bus:
// org.freedesktop.Application, by which freedesktop.org has desktops start programs. Main thread.
class ApplicationService final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    static const QString Name; // on the bus
    static const QString Path; // of the object, made of the name
    static const QString Interface;
    static const QString NotShown; // the error of what cannot be shown; its text are lines
    static const QString StartupId; // keys of the platform's data
    static const QString ActivationToken;

    ApplicationService(ShowDesk &desk, StartupToken::BringForward bringForward,
                       const QDBusConnection &bus);

public Q_SLOTS:
    // Called over the bus.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData, const QDBusMessage &call);
    // The first two in the left and the right pane.
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData,
                           const QDBusMessage &call);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameters,
                                     const QVariantMap &platformData, const QDBusMessage &call);

private:
    bool bringForward(const QVariantMap &platformData, const QDBusMessage &call);
    void refuse(const QDBusMessage &call, const QString &error, const QString &line);

    ShowDesk &desk;
    const StartupToken::BringForward _bringForward;
    QDBusConnection _bus;
};
