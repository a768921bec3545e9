#include "platform/desktop/FileManagerService.h"

#include "platform/desktop/ShowAddresses.h"

#include <QDBusError>

using namespace Qt::StringLiterals;
using What = ShowRequest::What;

const QString FileManagerService::Name = u"org.freedesktop.FileManager1"_s;
const QString FileManagerService::Path = u"/org/freedesktop/FileManager1"_s;

FileManagerService::FileManagerService(ShowDesk &showDesk, StartupToken::BringForward bringForward,
                                       const QDBusConnection &bus)
    : desk(showDesk)
    , _bringForward(std::move(bringForward))
    , _bus(bus)
{
}

void FileManagerService::ShowFolders(const QStringList &uris, const QString &startupId,
                                     const QDBusMessage &call)
{
    take(What::Folders, uris, startupId, call);
}

void FileManagerService::ShowItems(const QStringList &uris, const QString &startupId,
                                   const QDBusMessage &call)
{
    take(What::Items, uris, startupId, call);
}

void FileManagerService::ShowItemProperties(const QStringList &uris, const QString &startupId,
                                            const QDBusMessage &call)
{
    take(What::Information, uris, startupId, call);
}

void FileManagerService::take(What what, const QStringList &uris, const QString &startupId,
                              const QDBusMessage &call)
{
    // Before anything is shown: a sheet of information returns when it is closed.
    call.setDelayedReply(true);
    const ShowAddresses addresses = readShowAddresses(uris);
    const bool anyShown =
        !addresses.paths.isEmpty() && _bringForward(StartupToken::checked(startupId));
    if (call.isReplyRequired())
        _bus.send(
            anyShown || uris.isEmpty()
                ? call.createReply()
                : call.createErrorReply(QDBusError::InvalidArgs, addresses.refusals.join(u'\n')));
    if (anyShown)
        desk.show({ what, addresses.paths });
}
