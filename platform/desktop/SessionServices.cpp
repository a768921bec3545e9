#include "platform/desktop/SessionServices.h"

#include "platform/desktop/StartupToken.h"

SessionServices::SessionServices()
    : _bus(QDBusConnection::sessionBus())
    , _instance(_bus)
    , _application(
          *this, [this](const QByteArray &token) { return bringForward(token); }, _bus)
    , _fileManager(
          *this, [this](const QByteArray &token) { return bringForward(token); }, _bus)
{
}

SessionServices::~SessionServices()
{
    end();
}

SingleInstance::Verdict SessionServices::begin(const QStringList &folders, const QByteArray &token)
{
    // The objects first: whoever sees the name may call at once.
    _bus.registerObject(ApplicationService::Path, &_application,
                        QDBusConnection::ExportScriptableSlots);
    _bus.registerObject(FileManagerService::Path, &_fileManager,
                        QDBusConnection::ExportScriptableSlots);
    SingleInstance::Verdict verdict = _instance.claim(folders, token);
    if (verdict.role == SingleInstance::Verdict::Role::First)
        _instance.claimFileManager();
    return verdict;
}

void SessionServices::serve(ShowDesk &desk, QWidget &window)
{
    _desk = &desk;
    _window = &window;
}

void SessionServices::end()
{
    if (!_desk)
        return;
    _desk = nullptr;
    _window.clear();
    _bus.unregisterObject(ApplicationService::Path);
    _bus.unregisterObject(FileManagerService::Path);
    _instance.giveUpNames();
}

bool SessionServices::bringForward(const QByteArray &token)
{
    if (_window)
        StartupToken::bringForward(*_window, token);
    return _window != nullptr;
}

void SessionServices::show(const ShowRequest &request)
{
    if (_desk)
        _desk->show(request);
    else
        request.settled({});
}
