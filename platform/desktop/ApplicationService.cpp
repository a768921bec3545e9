#include "platform/desktop/ApplicationService.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "platform/desktop/ShowAddresses.h"
#include "platform/ShowDesk.h"

#include <QDBusError>
#include <QLoggingCategory>
#include <QTimer>

#include <chrono>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.requests")

// A sheet may stand in the way for hours: then the caller knows at least that it was understood.
constexpr std::chrono::seconds MostKeptWaiting { 1 };

QByteArray tokenIn(const QVariantMap &platformData)
{
    const QByteArray token =
        StartupToken::checked(platformData.value(ApplicationService::ActivationToken));
    return token.isEmpty()
        ? StartupToken::checked(platformData.value(ApplicationService::StartupId))
        : token;
}

} // namespace

const QString ApplicationService::Name = u"org.twinleaf.Twinleaf"_s;
const QString ApplicationService::Path = u"/org/twinleaf/Twinleaf"_s;
const QString ApplicationService::Interface = u"org.freedesktop.Application"_s;
const QString ApplicationService::NotShown = u"org.twinleaf.Twinleaf.Error.NotShown"_s;
const QString ApplicationService::StartupId = u"desktop-startup-id"_s;
const QString ApplicationService::ActivationToken = u"activation-token"_s;

ApplicationService::ApplicationService(ShowDesk &showDesk, StartupToken::BringForward bringForward,
                                       const QDBusConnection &bus)
    : desk(showDesk)
    , _bringForward(std::move(bringForward))
    , _bus(bus)
{
}

void ApplicationService::Activate(const QVariantMap &platformData, const QDBusMessage &call)
{
    bringForward(platformData, call);
}

void ApplicationService::Open(const QStringList &uris, const QVariantMap &platformData,
                              const QDBusMessage &call)
{
    if (!bringForward(platformData, call))
        return;
    const ShowAddresses addresses = readShowAddresses(uris);
    call.setDelayedReply(true);
    const auto isAnswered = std::make_shared<bool>(false);
    const auto answer = [bus = _bus, call, isAnswered,
                         refusals = addresses.refusals](const QStringList &complaints) {
        if (std::exchange(*isAnswered, true) || !call.isReplyRequired())
            return;
        const QStringList all = refusals + complaints;
        bus.send(all.isEmpty() ? call.createReply()
                               : call.createErrorReply(NotShown, all.join(u'\n')));
    };
    QTimer::singleShot(MostKeptWaiting, this, [answer] { answer({}); });
    if (addresses.paths.isEmpty())
        answer({});
    else
        desk.show({ ShowRequest::What::Panes, addresses.paths, answer });
}

void ApplicationService::ActivateAction(const QString &name, const QVariantList &,
                                        const QVariantMap &platformData, const QDBusMessage &call)
{
    if (name != "home"_L1) {
        const QString line = u"There is no action '%1'"_s.arg(FileName::shown(name.left(100)));
        qCWarning(log, "%s", qUtf8Printable(line));
        refuse(call, QDBusError::errorString(QDBusError::InvalidArgs), line);
    } else if (bringForward(platformData, call)) {
        desk.show({ ShowRequest::What::Folders, { PathText::homeFolder() } });
    }
}

// Else the caller is told that this program is on its way out, and can start another one.
bool ApplicationService::bringForward(const QVariantMap &platformData, const QDBusMessage &call)
{
    const bool isThere = _bringForward(tokenIn(platformData));
    if (!isThere)
        refuse(call, QDBusError::errorString(QDBusError::UnknownObject),
               u"The program is about to end"_s);
    return isThere;
}

void ApplicationService::refuse(const QDBusMessage &call, const QString &error, const QString &line)
{
    call.setDelayedReply(true);
    if (call.isReplyRequired())
        _bus.send(call.createErrorReply(error, line));
}
