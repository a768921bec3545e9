#include "platform/desktop/InstalledApplications.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/MountTable.h"
#include "platform/desktop/GioTypes.h"
#include "platform/desktop/ProgramWords.h"
#include "platform/desktop/SilentBus.h"
#include "widgets/Icons.h"

#include <QFile>
#include <QImageReader>
#include <QPixmap>
#include <QStandardPaths>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto entrySuffix = ".desktop"_L1;
constexpr auto appDirSuffix = ".AppDir"_L1;

QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&free)> real(realpath(path.constData(), nullptr), &free);
    return real ? QByteArray(real.get()) : QByteArray();
}

bool isInApplicationsOf(const char *dataFolder, const QByteArray &folder)
{
    const QByteArray applications = realPath(QByteArray(dataFolder) + "/applications");
    return !applications.isEmpty()
        && (folder == applications || folder.startsWith(applications + '/'));
}

// In a session of its own and silent: it neither ends with us nor writes over our log.
void ownSession(gpointer)
{
    setsid();
}

constexpr auto launchFlags =
    GSpawnFlags(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);

// The environment of what is started: with the buses that this run does without.
Owned<GAppLaunchContext> launchContext()
{
    Owned<GAppLaunchContext> context(g_app_launch_context_new());
    for (const SilentBus &bus : silentBuses()) {
        if (bus.address.isNull())
            g_app_launch_context_unsetenv(context.get(), bus.variable);
        else
            g_app_launch_context_setenv(context.get(), bus.variable, bus.address.constData());
    }
    return context;
}

bool launchUris(GDesktopAppInfo *info, GList *uris)
{
    return g_desktop_app_info_launch_uris_as_manager(info, uris, launchContext().get(), launchFlags,
                                                     ownSession, nullptr, nullptr, nullptr,
                                                     nullptr);
}

bool launchEntry(const QString &entry, const QStringList &files)
{
    const Owned<GDesktopAppInfo> info(
        g_desktop_app_info_new_from_filename(FileName::toBytes(entry).constData()));
    if (!info)
        return false;
    GList *uris = nullptr;
    for (const QString &file : files)
        uris = g_list_append(
            uris, g_filename_to_uri(FileName::toBytes(file).constData(), nullptr, nullptr));
    const bool launched = launchUris(info.get(), uris);
    g_list_free_full(uris, g_free);
    return launched;
}

bool launchExecutable(const QString &program, const QStringList &files)
{
    QList<QByteArray> words { FileName::toBytes(program) };
    for (const QString &file : files)
        words.append(FileName::toBytes(file));
    return InstalledApplications::start(words, {});
}

bool isExecutableFile(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    return status && status->kind == FileKind::Regular
        && access(FileName::toBytes(path).constData(), X_OK) == 0;
}

// A picture file that an entry names: anybody's, of any size. Read only from a local disk, and only
// as large as an icon is; null for anything else.
QIcon iconOfFile(const QString &path)
{
    constexpr int LargestSide = 1024; // as a file; a few milliseconds to read
    constexpr qint64 LargestFile = 4 << 20; // bytes
    constexpr qint64 LargestDrawing = 256 << 10; // bytes; each of them is drawn
    constexpr int Side = 128; // as it is kept
    if (MountTable::current().slowMountOnTheWay(path))
        return {};
    const Descriptor file(
        ::open(FileName::toBytes(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    const auto status = statusOf(file.number());
    QFile device;
    if (!status || status->kind != FileKind::Regular || status->size > LargestFile
        || !device.open(file.number(), QIODevice::ReadOnly))
        return {};
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (format == "svgz" || (format == "svg" && status->size > LargestDrawing))
        return {}; // of a packed one nobody knows how large it is
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > LargestSide || size.height() > LargestSide)
        return {};
    if (size.width() > Side || size.height() > Side)
        reader.setScaledSize(size.scaled(Side, Side, Qt::KeepAspectRatio));
    return QIcon(QPixmap::fromImage(reader.read()));
}

QIcon iconOfEntry(GAppInfo *info)
{
    GIcon *icon = g_app_info_get_icon(info);
    if (icon && G_IS_THEMED_ICON(icon)) {
        for (const char *const *name = g_themed_icon_get_names(G_THEMED_ICON(icon)); *name;
             ++name) {
            if (QIcon::hasThemeIcon(QString::fromUtf8(*name)))
                return QIcon::fromTheme(QString::fromUtf8(*name));
        }
    }
    if (icon && G_IS_FILE_ICON(icon)) {
        const OwnedText path(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon))));
        if (QIcon own = path ? iconOfFile(FileName::fromBytes(path.get())) : QIcon(); !own.isNull())
            return own;
    }
    return themedIcon(u"application-x-executable"_s);
}

} // namespace

QList<ApplicationPanel::Application> InstalledApplications::all()
{
    using Application = ApplicationPanel::Application;
    QList<Application> applications;
    GList *infos = g_app_info_get_all();
    for (GList *each = infos; each; each = each->next) {
        auto *info = G_APP_INFO(each->data);
        const QString path = pathOf(info);
        if (!path.isEmpty() && g_app_info_should_show(info))
            applications.append(
                { path, QString::fromUtf8(g_app_info_get_display_name(info)), iconOfEntry(info) });
    }
    g_list_free_full(infos, g_object_unref);
    std::sort(applications.begin(), applications.end(),
              [](const Application &a, const Application &b) {
                  return a.name.localeAwareCompare(b.name) < 0;
              });
    return applications;
}

QString InstalledApplications::firstOf(const QStringList &ids)
{
    for (const QString &id : ids) {
        const Owned<GDesktopAppInfo> info(
            g_desktop_app_info_new((id + entrySuffix).toUtf8().constData()));
        if (info)
            return pathOf(G_APP_INFO(info.get()));
    }
    return {};
}

QString InstalledApplications::systemTerminal()
{
    return QStandardPaths::findExecutable(u"x-terminal-emulator"_s);
}

QString InstalledApplications::terminal()
{
    if (QString chosen = systemTerminal(); !chosen.isEmpty())
        return chosen;
    QString found;
    GList *infos = g_app_info_get_all();
    for (GList *each = infos; each && found.isEmpty(); each = each->next) {
        if (!G_IS_DESKTOP_APP_INFO(each->data))
            continue;
        const char *categories = g_desktop_app_info_get_categories(G_DESKTOP_APP_INFO(each->data));
        if (categories && QByteArrayView(categories).contains("TerminalEmulator"))
            found = pathOf(G_APP_INFO(each->data));
    }
    g_list_free_full(infos, g_object_unref);
    return found;
}

QIcon InstalledApplications::iconOf(const QString &application)
{
    if (MountTable::current().slowMountOnTheWay(application))
        return themedIcon(u"application-x-executable"_s);
    const Owned<GDesktopAppInfo> info(
        g_desktop_app_info_new_from_filename(FileName::toBytes(application).constData()));
    return info ? iconOfEntry(G_APP_INFO(info.get())) : themedIcon(u"application-x-executable"_s);
}

bool InstalledApplications::isInstalledEntry(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (slash < 0 || !path.endsWith(entrySuffix))
        return false;
    const QByteArray folder = realPath(FileName::toBytes(path.left(slash)));
    if (folder.isEmpty())
        return false;
    if (isInApplicationsOf(g_get_user_data_dir(), folder))
        return true;
    for (const char *const *data = g_get_system_data_dirs(); *data; ++data) {
        if (isInApplicationsOf(*data, folder))
            return true;
    }
    return false;
}

bool InstalledApplications::isInstalledProgram(const QString &path)
{
    const QByteArray real = realPath(FileName::toBytes(path));
    return (real.startsWith("/usr/") || real.startsWith("/opt/")) && isExecutableFile(path);
}

bool InstalledApplications::isAppDir(const QString &path)
{
    return path.endsWith(appDirSuffix, Qt::CaseInsensitive);
}

QString InstalledApplications::starterOf(const QString &path)
{
    QString starter = path + "/AppRun"_L1;
    return isAppDir(path) && isExecutableFile(starter) ? starter : QString();
}

bool InstalledApplications::launch(const QString &application, const QStringList &files)
{
    if (isInstalledEntry(application))
        return launchEntry(application, files);
    if (isAppDir(application)) {
        const QString starter = starterOf(application);
        return !starter.isEmpty() && launchExecutable(starter, files);
    }
    return !application.endsWith(entrySuffix) && isExecutableFile(application)
        && launchExecutable(application, files);
}

bool InstalledApplications::start(const QList<QByteArray> &words, const QString &folder,
                                  QString *reason)
{
    const ProgramWords vector(words);
    const Owned<GAppLaunchContext> context = launchContext();
    const QByteArray place = FileName::toBytes(folder);
    if (!place.isEmpty()) // by which a shell knows the folder under the name that was asked for
        g_app_launch_context_setenv(context.get(), "PWD", place.constData());
    const std::unique_ptr<char *, decltype(&g_strfreev)> environment(
        g_app_launch_context_get_environment(context.get()), &g_strfreev);
    GError *error = nullptr;
    const bool started = g_spawn_async(place.isEmpty() ? nullptr : place.constData(),
                                       const_cast<char **>(vector.data()), environment.get(),
                                       launchFlags, ownSession, nullptr, nullptr, &error);
    const QString why = wordsOf(error);
    if (reason)
        *reason = why;
    return started;
}

bool InstalledApplications::openAddress(const QString &address)
{
    QByteArray uri = address.toUtf8();
    const OwnedText scheme(g_uri_parse_scheme(uri.constData()));
    const Owned<GAppInfo> info(scheme ? g_app_info_get_default_for_uri_scheme(scheme.get())
                                      : nullptr);
    GList only { uri.data(), nullptr, nullptr };
    return info && G_IS_DESKTOP_APP_INFO(info.get())
        && launchUris(G_DESKTOP_APP_INFO(info.get()), &only);
}
