#include "platform/desktop/InstalledApplications.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/MountTable.h"
#include "platform/desktop/SilentBus.h"
#include "widgets/Icons.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

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

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;
using OwnedText = std::unique_ptr<char, Free>;

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
    QList<QByteArray> bytes { FileName::toBytes(program) };
    for (const QString &file : files)
        bytes.append(FileName::toBytes(file));
    QList<char *> vector;
    for (QByteArray &argument : bytes)
        vector.append(argument.data());
    vector.append(nullptr);
    const std::unique_ptr<char *, decltype(&g_strfreev)> environment(
        g_app_launch_context_get_environment(launchContext().get()), &g_strfreev);
    return g_spawn_async(nullptr, vector.data(), environment.get(),
                         GSpawnFlags(G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL),
                         ownSession, nullptr, nullptr, nullptr);
}

bool isExecutableFile(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    return status && status->kind == FileKind::Regular
        && access(FileName::toBytes(path).constData(), X_OK) == 0;
}

OwnedText contentType(const QString &path)
{
    // The local files alone: the desktop's virtual file systems would want a session bus first.
    const QByteArray bytes = FileName::toBytes(path);
    const Owned<GFile> file(g_vfs_get_file_for_path(g_vfs_get_local(), bytes.constData()));
    const Owned<GFileInfo> info(g_file_query_info(file.get(),
                                                  G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                  G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    if (!info)
        return nullptr;
    // A desktop entry's own default application would be the one that runs it.
    if (path.endsWith(entrySuffix))
        return OwnedText(g_strdup("text/plain"));
    return OwnedText(g_strdup(g_file_info_get_content_type(info.get())));
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

QString pathOf(GAppInfo *info)
{
    const char *path = G_IS_DESKTOP_APP_INFO(info)
        ? g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(info))
        : nullptr;
    return path ? FileName::fromBytes(path) : QString();
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

QString InstalledApplications::defaultFor(const QString &path)
{
    const OwnedText type = contentType(path);
    if (!type)
        return {};
    const Owned<GAppInfo> info(g_app_info_get_default_for_type(type.get(), false));
    return info ? pathOf(info.get()) : QString();
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
