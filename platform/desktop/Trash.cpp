#include "platform/desktop/Trash.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "platform/desktop/TrashRecord.h"

#include <gio/gio.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <unistd.h>

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(trashLog, "twinleaf.trash")

namespace {

QString homeTrash()
{
    return FileName::fromBytes(g_get_user_data_dir()) + "/Trash"_L1;
}

// A volume's Trash lies at its top, under one of two names (and for the first, per person below).
bool isVolumeTrash(const QString &path)
{
    const QString user = QString::number(getuid());
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString folder = path.left(qMax<qsizetype>(slash, 1));
    const QStringView name = QStringView(path).sliced(slash + 1);
    if (name != u".Trash" && name != ".Trash-"_L1 + user)
        return false;
    const auto status = fileStatus(folder, Links::Follow);
    return folder == u"/" || (status && status->mountPoint);
}

bool liesInTrash(const QString &path)
{
    const QString parent = PathText::parent(path);
    if (exists(homeTrash()) && SameFile::isInside(parent, homeTrash()))
        return true;
    for (QString above = parent; above != u"/"; above = PathText::parent(above)) {
        if (isVolumeTrash(above))
            return true;
    }
    return false;
}

bool mustStay(const QString &path, const FileStatus &status)
{
    if (status.mountPoint || isVolumeTrash(path))
        return true;
    if (status.kind != FileKind::Directory)
        return false;
    const QString kept[] = { FileName::fromBytes(g_get_home_dir()), homeTrash(),
                             homeTrash() + "/files"_L1, homeTrash() + "/info"_L1 };
    return std::any_of(std::begin(kept), std::end(kept), [&](const QString &folder) {
        return exists(folder) && SameFile::isInside(folder, path);
    });
}

// Where the Trash would keep the record of an item: at home, or at the top of another volume.
QStringList recordFolders(const QString &item)
{
    const auto device = [](const QString &path) {
        const auto status = fileStatus(path, Links::Follow);
        return status ? std::optional(status->identity.device) : std::nullopt;
    };
    QString top = PathText::parent(item);
    const auto own = device(top);
    if (own == device(FileName::fromBytes(g_get_home_dir())))
        return { homeTrash() + "/info"_L1 };
    while (top != u"/" && device(PathText::parent(top)) == own)
        top = PathText::parent(top);
    const QString user = QString::number(getuid());
    return { PathText::joined(top, ".Trash/"_L1 + user + "/info"_L1),
             PathText::joined(top, ".Trash-"_L1 + user + "/info"_L1) };
}

// The record has the item's name and an ending; the second of a name gets a number besides.
bool isTooLong(const QString &item)
{
    const QByteArray record = FileName::toBytes(PathText::lastComponent(item)) + ".trashinfo";
    constexpr int roomForNumber = 4;
    const QStringList folders = recordFolders(item);
    return std::any_of(folders.begin(), folders.end(), [&](const QString &folder) {
        const bool taken = exists(PathText::joined(folder, FileName::fromBytes(record)));
        const long limit = pathconf(FileName::toBytes(folder).constData(), _PC_NAME_MAX);
        return record.size() + (taken ? roomForNumber : 0) > (limit > 0 ? limit : NAME_MAX);
    });
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

// Slashes at its end would mean the folder behind a link.
QString itemPath(const QString &path)
{
    QString item = path;
    while (item.size() > 1 && item.endsWith(u'/'))
        item.chop(1);
    return item;
}

} // namespace

QString Trash::refusal(const QString &path)
{
    const QString item = itemPath(path);
    const auto status = fileStatus(item, Links::NoFollow);
    if (!item.startsWith(u'/') || !status)
        return localized("It does not exist.");
    if (liesInTrash(item))
        return localized("It lies in the Trash already.");
    if (item == u"/" || mustStay(item, *status))
        return localized("It is a volume, the home folder or the Trash, or holds one of them.");
    if (isTooLong(item))
        return localized("Its name is too long for the Trash.");
    const QByteArray folder = FileName::toBytes(PathText::parent(item));
    if (access(folder.constData(), W_OK | X_OK) != 0)
        return QString::fromLocal8Bit(g_strerror(errno));
    if (!canBeTrashed(item))
        return localized("There is no Trash on its volume, or no right to move it there.");
    return {};
}

bool Trash::moveItem(const QString &path, QString *reason, const QString &origin)
{
    const QString refused = refusal(path);
    if (reason)
        *reason = refused;
    if (!refused.isEmpty())
        return false;
    const QString item = itemPath(path);
    const auto status = fileStatus(item, Links::NoFollow);
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
