#include "platform/desktop/VolumeEjection.h"

#include "base/Localized.h"
#include "files/MountTable.h"
#include "platform/desktop/DesktopPrograms.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

const auto service = u"org.freedesktop.UDisks2"_s;
const auto blockInterface = u"org.freedesktop.UDisks2.Block"_s;
const auto driveInterface = u"org.freedesktop.UDisks2.Drive"_s;
constexpr int patience = 10 * 60 * 1000; // a slow stick with much still to write

// The disk service over a connection of this thread's own.
class Disks {
public:
    Disks()
        : _bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName()))
    {
    }
    ~Disks() { QDBusConnection::disconnectFromBus(connectionName()); }
    Disks(const Disks &) = delete;
    Disks &operator=(const Disks &) = delete;

    QDBusMessage call(const QString &object, const QString &interface, const QString &method,
                      const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, object, interface, method);
        message.setArguments(arguments);
        return _bus.call(message, QDBus::Block, patience);
    }

    // What speaks against it; invalid when it is done.
    QDBusError act(const QString &object, const QString &interface, const QString &method) const
    {
        return QDBusError(call(object, interface, method, { QVariantMap() }));
    }

    QVariant property(const QString &object, const QString &interface, const QString &name) const
    {
        const QDBusReply<QDBusVariant> reply =
            call(object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, { interface, name });
        return reply.isValid() ? reply.value().variant() : QVariant();
    }

    QString blockObject(const QString &device, QString &reason) const
    {
        const QDBusReply<QList<QDBusObjectPath>> reply =
            call(u"/org/freedesktop/UDisks2/Manager"_s, u"org.freedesktop.UDisks2.Manager"_s,
                 u"ResolveDevice"_s, { QVariantMap { { u"path"_s, device } }, QVariantMap() });
        const bool isServed =
            reply.error().type() != QDBusError::ServiceUnknown && _bus.isConnected();
        reason = isServed ? reply.error().message()
                          : localized("The service that ejects volumes (udisks2) is not there.");
        return reply.isValid() && !reply.value().isEmpty() ? reply.value().first().path()
                                                           : QString();
    }

private:
    static QString connectionName() { return u"twinleaf-eject"_s; }

    QDBusConnection _bus;
};

bool unmountFuse(const QString &point, QString &reason)
{
    const ProgramEnd end =
        DesktopPrograms().run({ u"/usr/bin/fusermount3"_s, u"-u"_s, u"--"_s, point });
    reason = end.errorText;
    return end.succeeded();
}

bool unmountDisk(const QString &device, QString &reason)
{
    const Disks disks;
    const QString block = disks.blockObject(device, reason);
    if (block.isEmpty())
        return false;
    const QDBusError refused =
        disks.act(block, u"org.freedesktop.UDisks2.Filesystem"_s, u"Unmount"_s);
    if (refused.isValid()) {
        reason = refused.message();
        return false;
    }
    const QString drive =
        disks.property(block, blockInterface, u"Drive"_s).value<QDBusObjectPath>().path();
    if (drive.size() <= 1)
        return true;
    // A drive with another mounted volume refuses both; this volume is safe to part from all the
    // same.
    if (disks.property(drive, driveInterface, u"Ejectable"_s).toBool())
        disks.act(drive, driveInterface, u"Eject"_s);
    else if (disks.property(drive, driveInterface, u"CanPowerOff"_s).toBool())
        disks.act(drive, driveInterface, u"PowerOff"_s);
    return true;
}

} // namespace

bool ejectVolume(const QString &point, QString *reason)
{
    const MountTable table = MountTable::current();
    const Mount *mount = table.mountOf(point);
    if (!mount || mount->point != point || point == u"/")
        return false;
    QString why;
    const bool unmounted = mount->type == u"fuse" || mount->type.startsWith("fuse."_L1)
        ? unmountFuse(point, why)
        : unmountDisk(mount->source, why);
    if (reason)
        *reason = why;
    return unmounted;
}
