#include "platform/desktop/SingleInstance.h"

#include "base/Localized.h"
#include "files/FileUrls.h"
#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/FileManagerService.h"

#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QLoggingCategory>
#include <QThread>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Role = SingleInstance::Verdict::Role;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.session")

constexpr std::chrono::milliseconds BusPatience = 3s; // with the bus itself
constexpr auto BetweenTries = 20ms; // while the other one is ending

const auto BusName = u"org.freedesktop.DBus"_s;

// Of a request for a name, and its answers: RequestName of org.freedesktop.DBus.
enum Flag : unsigned { AllowReplacement = 1, ReplaceExisting = 2, DoNotQueue = 4 };
enum Answer : unsigned { None = 0, PrimaryOwner = 1, InQueue = 2, Exists = 3, AlreadyOwner = 4 };

bool isPassing(const QString &error)
{
    static const QStringList ofAnEnd { u"org.freedesktop.DBus.Error.NoReply"_s,
                                       u"org.freedesktop.DBus.Error.ServiceUnknown"_s,
                                       u"org.freedesktop.DBus.Error.NameHasNoOwner"_s,
                                       u"org.freedesktop.DBus.Error.UnknownObject"_s };
    return ofAnEnd.contains(error);
}

QDBusMessage callOfBus(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(BusName, u"/org/freedesktop/DBus"_s, BusName, method);
    call.setArguments(arguments);
    return call;
}

} // namespace

SingleInstance::SingleInstance(const QDBusConnection &bus, std::chrono::milliseconds patience)
    : _bus(bus)
    , _patience(patience)
{
}

SingleInstance::Verdict SingleInstance::claim(const QStringList &folders, const QByteArray &token)
{
    const QString name = ApplicationService::Name;
    const QDeadlineTimer deadline(_patience);
    while (_bus.isConnected()) {
        const unsigned answer = request(name, AllowReplacement | DoNotQueue);
        if (answer == PrimaryOwner || answer == AlreadyOwner) {
            // Who hangs loses it to another; once that ends it is this one's again.
            request(name, AllowReplacement);
            return { Role::First };
        }
        if (answer != Exists)
            return { Role::Alone };
        const QString owner = ownerOf(name);
        const auto user = userOf(owner);
        if (!user && !deadline.hasExpired()) {
            QThread::msleep(BetweenTries.count());
            continue; // it went meanwhile
        }
        // A process of another user's, as with sudo, must not show folders for this one.
        if (user != getuid()) {
            qCWarning(log, "The name on the bus belongs to another user, or to nobody known");
            return { Role::Alone };
        }
        const QDBusMessage reply =
            handOver(folders, token, std::chrono::milliseconds(deadline.remainingTime()));
        if (reply.type() == QDBusMessage::ReplyMessage)
            return { Role::Done };
        if (reply.errorName() == ApplicationService::NotShown)
            return { Role::Refused, reply.errorMessage().split(u'\n') };
        if (!isPassing(reply.errorName())) // it is there: of another version, or too busy
            return { Role::Alone,
                     { filled(localized("the Twinleaf that is open did not take it: %@"),
                              reply.errorMessage()) } };
        if (!deadline.hasExpired()) {
            QThread::msleep(BetweenTries.count());
            continue;
        }
        _silentOwner = owner;
        const unsigned taken = request(name, AllowReplacement | ReplaceExisting | DoNotQueue);
        return { taken == PrimaryOwner || taken == AlreadyOwner ? Role::First : Role::Alone,
                 { localized("the Twinleaf that is open does not answer; this is another one") } };
    }
    return { Role::Alone };
}

void SingleInstance::claimFileManager()
{
    const QString name = FileManagerService::Name;
    const bool replaces = !_silentOwner.isEmpty() && ownerOf(name) == _silentOwner;
    const unsigned answer =
        request(name, replaces ? AllowReplacement | ReplaceExisting : AllowReplacement);
    if (answer == InQueue)
        qCInfo(log, "Another file manager is asked to show files; this one when that ends");
}

void SingleInstance::giveUpNames()
{
    for (const QString &name : { FileManagerService::Name, ApplicationService::Name })
        _bus.send(callOfBus(u"ReleaseName"_s, { name })); // its answer is of no use
}

std::optional<uid_t> SingleInstance::userOf(const QString &owner) const
{
    const QDBusMessage reply = ask(u"GetConnectionUnixUser"_s, { owner });
    return reply.type() == QDBusMessage::ReplyMessage
        ? std::optional(reply.arguments().value(0).toUInt())
        : std::nullopt;
}

QString SingleInstance::ownerOf(const QString &name) const
{
    return ask(u"GetNameOwner"_s, { name }).arguments().value(0).toString();
}

unsigned SingleInstance::request(const QString &name, unsigned flags) const
{
    const QDBusMessage reply = ask(u"RequestName"_s, { name, flags });
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toUInt()
                                                      : unsigned(None);
}

QDBusMessage SingleInstance::ask(const QString &method, const QVariantList &arguments) const
{
    return _bus.call(callOfBus(method, arguments), QDBus::Block, int(BusPatience.count()));
}

QDBusMessage SingleInstance::handOver(const QStringList &folders, const QByteArray &token,
                                      std::chrono::milliseconds time) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        ApplicationService::Name, ApplicationService::Path, ApplicationService::Interface,
        folders.isEmpty() ? u"Activate"_s : u"Open"_s);
    if (!folders.isEmpty()) {
        QStringList addresses;
        for (const QString &folder : folders)
            addresses.append(QString::fromLatin1(FileUrls::uriList({ folder }).trimmed()));
        call << addresses;
    }
    const QString word = QString::fromLatin1(token);
    call << QVariantMap { { ApplicationService::StartupId, word },
                          { ApplicationService::ActivationToken, word } };
    call.setAutoStartService(false);
    return _bus.call(call, QDBus::Block, int(time.count()));
}
