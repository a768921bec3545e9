#include "platform/desktop/Polkit.h"

#include "base/Arrivals.h"
#include "files/ProcessStart.h"
#include "platform/desktop/PasswordWait.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QMap>

#include <chrono>
#include <limits>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.rights")

using namespace std::chrono_literals;
constexpr std::chrono::milliseconds Patience = 3s; // with what needs no person
constexpr int AsLongAsItTakes = std::numeric_limits<int>::max();

enum class Interaction : uint { None = 0, Allowed = 1 };

// One of our own, so that it can be made again when the bus was gone.
const auto connectionName = u"twinleaf-rights"_s;

QDBusConnection bus()
{
    QDBusConnection present(connectionName);
    if (present.isConnected())
        return present;
    QDBusConnection::disconnectFromBus(connectionName);
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName);
}

QDBusMessage callOf(const QString &method)
{
    return QDBusMessage::createMethodCall(u"org.freedesktop.PolicyKit1"_s,
                                          u"/org/freedesktop/PolicyKit1/Authority"_s,
                                          u"org.freedesktop.PolicyKit1.Authority"_s, method);
}

QVariant thisProcess()
{
    QDBusArgument subject;
    subject.beginStructure();
    subject << u"unix-process"_s
            << QVariantMap { { u"pid"_s, uint(getpid()) },
                             { u"start-time"_s,
                               qulonglong(
                                   startOfProcess(getpid()).value_or(ProcessStart()).ticks) },
                             { u"uid"_s, int(getuid()) } };
    subject.endStructure();
    return QVariant::fromValue(subject);
}

QDBusMessage checkCall(const QString &action, Interaction interaction, const QString &cancellation)
{
    QDBusArgument details; // which only root may give
    details.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    details.endMap();
    QDBusMessage call = callOf(u"CheckAuthorization"_s);
    call << thisProcess() << action << QVariant::fromValue(details) << uint(interaction)
         << cancellation;
    return call;
}

Polkit::Verdict verdictIn(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != u"(bba{ss})") {
        qCWarning(log, "No rights: %s", qUtf8Printable(reply.errorMessage()));
        return {};
    }
    Polkit::Verdict verdict;
    bool isChallenge = false;
    QMap<QString, QString> details;
    const auto result = reply.arguments().constFirst().value<QDBusArgument>();
    result.beginStructure();
    result >> verdict.authorized >> isChallenge >> details;
    result.endStructure();
    verdict.temporary = details.value(u"polkit.temporary_authorization_id"_s);
    return verdict;
}

// Nothing when it did not come in time.
QDBusMessage quickAnswer(const QDBusMessage &call)
{
    const QDBusPendingCallWatcher answer(bus().asyncCall(call, int(Patience.count())));
    if (!answer.isFinished()) {
        const Arrivals::Hold hold;
        QEventLoop loop;
        QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return answer.isFinished() ? answer.reply() : QDBusMessage();
}

} // namespace

Polkit::Polkit(QString action)
    : _action(std::move(action))
{
}

Polkit::~Polkit()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

Polkit::Verdict Polkit::check()
{
    return verdictIn(quickAnswer(checkCall(_action, Interaction::None, {})));
}

Polkit::Verdict Polkit::ask(PasswordWait &wait)
{
    static int questions = 0;
    const QString cancellation = u"twinleaf-%1-%2"_s.arg(getpid()).arg(++questions);
    const QDBusPendingCallWatcher answer(
        bus().asyncCall(checkCall(_action, Interaction::Allowed, cancellation), AsLongAsItTakes));
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &answer, [&] { wait.end(); });
    if (answer.isFinished()) // without a bus at once, and then nothing tells of it
        wait.end();
    if (wait.wait())
        return verdictIn(answer.reply());
    QDBusMessage cancel = callOf(u"CancelCheckAuthorization"_s);
    cancel << cancellation;
    bus().send(cancel);
    return {};
}

bool Polkit::revoke(const QString &temporary)
{
    QDBusMessage call = callOf(u"RevokeTemporaryAuthorizationById"_s);
    call << temporary;
    const QDBusMessage reply = quickAnswer(call);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return true;
    qCWarning(log, "Rights stay: %s", qUtf8Printable(reply.errorMessage()));
    return false;
}
