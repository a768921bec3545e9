#include "platform/desktop/Trash.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "platform/desktop/TrashFolder.h"
#include "platform/desktop/TrashRecord.h"

#include <gio/gio.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <unistd.h>

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(trashLog, "twinleaf.trash")

namespace {

// A volume's Trash lies at its top; the one for all persons has a folder for each.
bool isVolumeTrash(const QString &path)
{
    const QString top = PathText::parent(path);
    const auto lies = [&](const TrashPlace &trash) {
        return path == trash.folder || path == PathText::parent(trash.folder);
    };
    if (path == top || std::ranges::none_of(TrashPlace::atTop(top), lies))
        return false;
    const auto status = fileStatus(top, Links::Follow);
    return top == u"/" || (status && status->mountPoint);
}

bool isInTrash(const QString &folder, const MountTable &mounts)
{
    if (const QString home = TrashPlace::ofHome().folder;
        exists(home) && SameFile::isInside(folder, home, mounts))
        return true;
    for (QString above = folder; above.size() > 1; above = PathText::parent(above)) {
        if (isVolumeTrash(above))
            return true;
    }
    return false;
}

// Where the Trash would keep the records of a folder's items: at home, or at the top of another
// volume.
QStringList recordFolders(const QString &folder)
{
    const auto device = [](const QString &path) {
        const auto status = fileStatus(path, Links::Follow);
        return status ? std::optional(status->identity.device) : std::nullopt;
    };
    QString top = folder;
    const auto own = device(top);
    if (own == device(FileName::fromBytes(g_get_home_dir())))
        return { TrashPlace::ofHome().records() };
    while (top.size() > 1 && device(PathText::parent(top)) == own)
        top = PathText::parent(top);
    QStringList folders;
    for (const TrashPlace &trash : TrashPlace::atTop(top))
        folders += trash.records();
    return folders;
}

// The local files alone: the desktop's virtual file systems would want a session bus first.
GFile *localFile(const QString &path)
{
    return g_vfs_get_file_for_path(g_vfs_get_local(), FileName::toBytes(path).constData());
}

// Whether there is a Trash for it, and the right to move it there.
bool canBeTrashed(const QString &path)
{
    GFile *file = localFile(path);
    GFileInfo *info = g_file_query_info(file, G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH,
                                        G_FILE_QUERY_INFO_NOFOLLOW_SYMLINKS, nullptr, nullptr);
    // What cannot be asked is tried.
    const bool can = !info || !g_file_info_has_attribute(info, G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH)
        || g_file_info_get_attribute_boolean(info, G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH);
    g_clear_object(&info);
    g_object_unref(file);
    return can;
}

} // namespace

Trash::Folder::Folder(const QString &path)
    : _path(path)
    , _liesInTrash(isInTrash(path, _mounts))
{
    const TrashPlace home = TrashPlace::ofHome();
    for (const QString &folder :
         { FileName::fromBytes(g_get_home_dir()), home.folder, home.files(), home.records() })
        if (exists(folder))
            _kept += folder;
    const QStringList folders = recordFolders(path);
    for (const QString &folder : folders) {
        const long limit = pathconf(FileName::toBytes(folder).constData(), _PC_NAME_MAX);
        _records.append({ folder, limit > 0 ? limit : NAME_MAX });
    }
    if (access(FileName::toBytes(path).constData(), W_OK | X_OK) != 0)
        _notWritable = QString::fromLocal8Bit(g_strerror(errno));
}

QString Trash::Folder::itemPath(const QString &name) const
{
    return PathText::joined(_path, name);
}

QString Trash::Folder::whyItMustStay(const QString &item, const FileStatus &status) const
{
    const auto holds = [&](const QString &folder) {
        return SameFile::isInside(folder, item, _mounts);
    };
    if (status.mountPoint || isVolumeTrash(item)
        || (status.kind == FileKind::Directory && std::any_of(_kept.begin(), _kept.end(), holds)))
        return localized("It is a volume, the home folder or the Trash, or holds one of them.");
    if (status.kind != FileKind::Directory)
        return {};
    // Whatever the folder is called here.
    char real[PATH_MAX];
    const char *found = realpath(FileName::toBytes(item).constData(), real);
    if (_mounts.anyIn(found ? FileName::fromBytes(found) : item))
        return localized("A volume is mounted in it.");
    return {};
}

QString Trash::Folder::refusalForGood(const QString &name) const
{
    const QString item = itemPath(name);
    const auto status = fileStatus(item, Links::NoFollow);
    if (!status)
        return localized("It does not exist.");
    return whyItMustStay(item, *status);
}

// The record has the item's name and an ending; the second of a name gets a number besides.
bool Trash::Folder::isTooLong(const QString &name) const
{
    const QByteArray record = FileName::toBytes(name) + ".trashinfo";
    constexpr int roomForNumber = 4;
    return std::any_of(_records.begin(), _records.end(), [&](const Records &records) {
        const bool taken = exists(PathText::joined(records.folder, FileName::fromBytes(record)));
        return record.size() + (taken ? roomForNumber : 0) > records.longestName;
    });
}

QString Trash::Folder::refusal(const QString &name)
{
    const QString item = itemPath(name);
    const auto status = fileStatus(item, Links::NoFollow);
    if (!status)
        return localized("It does not exist.");
    if (_liesInTrash)
        return localized("It lies in the Trash already.");
    if (QString reason = whyItMustStay(item, *status); !reason.isEmpty())
        return reason;
    if (isTooLong(name))
        return localized("Its name is too long for the Trash.");
    if (!_notWritable.isEmpty())
        return _notWritable;
    if (!canBeTrashed(item))
        return localized("There is no Trash on its volume, or no right to move it there.");
    _allowed.insert(name, status->identity);
    return {};
}

bool Trash::Folder::moveItem(const QString &name, QString *reason, const QString &origin)
{
    const QString item = itemPath(name);
    const auto status = fileStatus(item, Links::NoFollow);
    const auto allowed = _allowed.constFind(name);
    // Another one may have come there.
    const bool isThatOne = status && !status->mountPoint && allowed != _allowed.constEnd()
        && *allowed == status->identity;
    const QString refused = isThatOne ? QString() : refusal(name);
    if (reason)
        *reason = refused;
    if (!refused.isEmpty())
        return false;
    GFile *file = localFile(item);
    GError *error = nullptr;
    const bool moved = g_file_trash(file, nullptr, &error);
    g_object_unref(file);
    if (moved && status && !origin.isEmpty()
        && !TrashRecord::setOrigin(status->identity, item, origin))
        qCWarning(trashLog) << "An item in the Trash does not know its place:" << origin;
    if (error) {
        qCInfo(trashLog) << FileName::shown(item) << error->message;
        if (reason)
            *reason = FileName::shown(QString::fromUtf8(error->message));
        g_error_free(error);
    }
    return moved;
}

bool Trash::moveItem(const QString &path, QString *reason, const QString &origin)
{
    // Slashes at its end would mean the folder behind a link.
    QString item = path;
    while (item.size() > 1 && item.endsWith(u'/'))
        item.chop(1);
    if (item.startsWith(u'/'))
        return Folder(PathText::parent(item))
            .moveItem(PathText::lastComponent(item), reason, origin);
    if (reason)
        *reason = localized("It does not exist.");
    return false;
}
