#include "platform/desktop/DesktopWorkspace.h"

#include "platform/desktop/InstalledApplications.h"
#include "platform/desktop/Trash.h"
#include "platform/desktop/VolumeEjection.h"
#include "platform/FileName.h"
#include "platform/FileStatus.h"
#include "platform/MainThread.h"

#include <QEventLoop>
#include <QThread>

#include <glib.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// What starts by itself; everything else is opened with something.
bool isApplication(const QString &path)
{
    return InstalledApplications::isInstalledEntry(path)
        || path.endsWith(".AppDir"_L1, Qt::CaseInsensitive);
}

} // namespace

DesktopWorkspace::DesktopWorkspace(QObject *parent)
    : Workspace(parent)
{
    connect(&_mountWatch, &MountWatch::volumeDidMount, this, &Workspace::volumeDidMount);
    connect(&_mountWatch, &MountWatch::volumeDidUnmount, this, &Workspace::volumeDidUnmount);
    connect(&_sessionEnd, &SessionEnd::willEnd, this, &Workspace::willPowerOff);
}

bool DesktopWorkspace::launchApplication(const QString &path)
{
    return isApplication(path) ? InstalledApplications::launch(path, {}) : openFile(path);
}

bool DesktopWorkspace::openFile(const QString &path, const QString &application)
{
    if (!application.isEmpty())
        return exists(path) && InstalledApplications::launch(application, { path });
    if (isApplication(path))
        return InstalledApplications::launch(path, {});
    const QString standard = InstalledApplications::defaultFor(path);
    return !standard.isEmpty() && InstalledApplications::launch(standard, { path });
}

bool DesktopWorkspace::openInstallerPackage(const QString &path)
{
    return openFile(path);
}

QString DesktopWorkspace::applicationForFile(const QString &path) const
{
    return InstalledApplications::defaultFor(path);
}

bool DesktopWorkspace::moveToTrash(const QString &path)
{
    return moveItemToTrash(path);
}

QStringList DesktopWorkspace::mountedLocalVolumePaths() const
{
    return localVolumePoints();
}

bool DesktopWorkspace::eject(const QString &volume)
{
    if (!isMainThread())
        return ejectVolume(volume);
    bool ejected = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] { ejected = ejectVolume(volume); }));
    QEventLoop waiting;
    connect(thread.get(), &QThread::finished, &waiting, &QEventLoop::quit);
    thread->start();
    waiting.exec();
    thread->wait();
    return ejected;
}

QString DesktopWorkspace::volumesFolder() const
{
    const QString user = FileName::fromBytes(g_get_user_name());
    const QString media = "/media/"_L1 + user;
    return exists(media) ? media : "/run/media/"_L1 + user;
}
