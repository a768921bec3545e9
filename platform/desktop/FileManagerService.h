#pragma once

#include "platform/desktop/StartupToken.h"
#include "platform/ShowDesk.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

// "Show in folder" of browsers and other programs: org.freedesktop.FileManager1 (File Manager
// D-Bus Interface of freedesktop.org). Callers are answered at once, whatever is in the way of
// showing. Main thread.
class FileManagerService final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    static const QString Name; // on the bus, shared by all file managers
    static const QString Path;

    FileManagerService(ShowDesk &desk, StartupToken::BringForward bringForward,
                       const QDBusConnection &bus);

public Q_SLOTS:
    // Called over the bus.
    Q_SCRIPTABLE void ShowFolders(const QStringList &uris, const QString &startupId,
                                  const QDBusMessage &call);
    Q_SCRIPTABLE void ShowItems(const QStringList &uris, const QString &startupId,
                                const QDBusMessage &call);
    Q_SCRIPTABLE void ShowItemProperties(const QStringList &uris, const QString &startupId,
                                         const QDBusMessage &call);

private:
    void take(ShowRequest::What what, const QStringList &uris, const QString &startupId,
              const QDBusMessage &call);

    ShowDesk &desk;
    const StartupToken::BringForward _bringForward;
    QDBusConnection _bus;
};
