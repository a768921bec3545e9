#include "platform/desktop/DesktopWorkspace.h"

#include "base/MainThread.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "platform/desktop/ClipboardOwner.h"
#include "platform/desktop/InstalledApplications.h"
#include "platform/desktop/SearchWindow.h"
#include "platform/desktop/TerminalInFolder.h"
#include "platform/desktop/Trash.h"
#include "platform/desktop/TypeApplications.h"
#include "platform/desktop/VolumeEjection.h"
#include "widgets/FileKinds.h"

#include <QEventLoop>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// What starts by itself; everything else is opened with something. Of the bare programs only the
// terminal, which has no entry of its own: a program that a person opens is a file like any other.
bool isApplication(const QString &path)
{
    return InstalledApplications::isInstalledEntry(path) || InstalledApplications::isAppDir(path)
        || (!path.isEmpty() && path == InstalledApplications::systemTerminal());
}

// The default application of its kind would be that of folders: another file manager.
bool isPackage(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    return status && status->kind == FileKind::Directory
        && FileKinds::isPackageName(PathText::lastComponent(path));
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
    // A person can have chosen a bare program as a favourite. One from elsewhere is not run: what
    // is merely named as an application comes here, too.
    return isApplication(path) || InstalledApplications::isInstalledProgram(path)
        ? InstalledApplications::launch(path, {})
        : openFile(path);
}

bool DesktopWorkspace::isInstalledApplication(const QString &path) const
{
    return InstalledApplications::isInstalledEntry(path);
}

QString DesktopWorkspace::foreignProgram(const QString &path) const
{
    return InstalledApplications::starterOf(path);
}

bool DesktopWorkspace::openFile(const QString &path, const QString &application)
{
    if (!application.isEmpty())
        return exists(path) && InstalledApplications::launch(application, { path });
    if (isApplication(path))
        return InstalledApplications::launch(path, {});
    if (isPackage(path))
        return false;
    const QString standard = TypeApplications::defaultFor(path);
    return !standard.isEmpty() && InstalledApplications::launch(standard, { path });
}

bool DesktopWorkspace::openInstallerPackage(const QString &path)
{
    return openFile(path);
}

QString DesktopWorkspace::applicationForFile(const QString &path) const
{
    return TypeApplications::defaultFor(path);
}

Workspace::FileApplications DesktopWorkspace::applicationsForFiles(const QStringList &paths) const
{
    return TypeApplications::forFiles(paths);
}

bool DesktopWorkspace::setDefaultApplication(const QString &application, const QString &type,
                                             QString *reason)
{
    return TypeApplications::setDefault(application, type, reason);
}

bool DesktopWorkspace::openTerminal(const QString &folder, QString *reason)
{
    return TerminalInFolder::open(folder, reason);
}

QString DesktopWorkspace::textEditor() const
{
    return TypeApplications::textEditor();
}

QString DesktopWorkspace::applicationForTool(Tool tool) const
{
    // The first that is installed, desktop by desktop.
    switch (tool) {
    case Tool::Terminal:
        return InstalledApplications::terminal();
    case Tool::Console:
        return InstalledApplications::firstOf(
            { u"org.gnome.Logs"_s, u"org.kde.ksystemlog"_s, u"mate-system-log"_s });
    case Tool::ActivityMonitor:
        return InstalledApplications::firstOf(
            { u"gnome-system-monitor"_s, u"org.gnome.SystemMonitor"_s,
              u"org.kde.plasma-systemmonitor"_s, u"org.kde.ksysguard"_s, u"xfce4-taskmanager"_s,
              u"mate-system-monitor"_s, u"lxtask"_s });
    case Tool::DiskUtility:
        return InstalledApplications::firstOf(
            { u"org.gnome.DiskUtility"_s, u"org.kde.partitionmanager"_s, u"gparted"_s });
    case Tool::Keychain:
        return InstalledApplications::firstOf({ u"org.gnome.seahorse.Application"_s,
                                                u"org.kde.kwalletmanager5"_s,
                                                u"org.kde.kwalletmanager"_s });
    case Tool::NetworkUtility:
        return InstalledApplications::firstOf({ u"nm-connection-editor"_s });
    case Tool::NetInfoManager:
        return InstalledApplications::firstOf({ u"users"_s, u"users-admin"_s,
                                                u"gnome-users-panel"_s, u"kcm_users"_s,
                                                u"mate-users-admin"_s });
    case Tool::SystemProfiler:
        return InstalledApplications::firstOf({ u"hardinfo"_s, u"org.kde.kinfocenter"_s,
                                                u"gnome-info-overview-panel"_s,
                                                u"gnome-about-panel"_s });
    }
    return {};
}

QIcon DesktopWorkspace::iconOfApplication(const QString &path) const
{
    return InstalledApplications::iconOf(path);
}

bool DesktopWorkspace::showSearchWindow(const QString &text)
{
    return SearchWindow::show(text);
}

bool DesktopWorkspace::clipboardAnswers() const
{
    return clipboardOwnerAnswers();
}

bool DesktopWorkspace::openAddress(const QString &address)
{
    return InstalledApplications::openAddress(address);
}

std::unique_ptr<Workspace::TrashRun> DesktopWorkspace::trashRun(const QString &folder)
{
    struct Run final : TrashRun {
        explicit Run(const QString &folder)
            : _trash(folder)
        {
        }
        QString refusal(const QString &name) override { return _trash.refusal(name); }
        QString refusalForGood(const QString &name) override { return _trash.refusalForGood(name); }
        bool move(const QString &name, QString *reason) override
        {
            return _trash.moveItem(name, reason);
        }

    private:
        Trash::Folder _trash;
    };
    return std::make_unique<Run>(folder);
}

bool DesktopWorkspace::moveToTrash(const QString &path, QString *reason, const QString &origin)
{
    return Trash::moveItem(path, reason, origin);
}

QStringList DesktopWorkspace::mountedLocalVolumePaths() const
{
    return localVolumePoints();
}

bool DesktopWorkspace::eject(const QString &volume, QString *reason)
{
    if (!isMainThread())
        return ejectVolume(volume, reason);
    bool ejected = false;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { ejected = ejectVolume(volume, reason); }));
    QEventLoop waiting;
    connect(thread.get(), &QThread::finished, &waiting, &QEventLoop::quit);
    thread->start();
    waiting.exec();
    thread->wait();
    return ejected;
}

QString DesktopWorkspace::volumesFolder() const
{
    return ::volumesFolder();
}
