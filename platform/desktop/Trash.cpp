#include "platform/desktop/Trash.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/SameFile.h"

#include <gio/gio.h>

#include <QLoggingCategory>

#include <algorithm>
#include <unistd.h>

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(trashLog, "twinleaf.trash")

namespace {

// A volume's Trash lies at its top, under one of two names (and for the first, per person below).
bool isVolumeTrash(const QString &path)
{
    const QString user = QString::number(getuid());
    const QString folder = PathText::parent(path);
    const QString name = PathText::lastComponent(path);
    if (name != u".Trash" && name != ".Trash-"_L1 + user)
        return false;
    const auto status = fileStatus(folder, Links::Follow);
    return folder == u"/" || (status && status->mountPoint);
}

bool mustStay(const QString &path, const FileStatus &status)
{
    if (status.mountPoint || isVolumeTrash(path))
        return true;
    if (status.kind != FileKind::Directory)
        return false;
    const QString trash = FileName::fromBytes(g_get_user_data_dir()) + "/Trash"_L1;
    const QString kept[] = { FileName::fromBytes(g_get_home_dir()), trash, trash + "/files"_L1,
                             trash + "/info"_L1 };
    return std::any_of(std::begin(kept), std::end(kept), [&](const QString &folder) {
        return exists(folder) && SameFile::isInside(folder, path);
    });
}

} // namespace

bool moveItemToTrash(const QString &path)
{
    const QString item = PathText::normalized(path);
    const auto status = fileStatus(item, Links::NoFollow);
    if (item.isEmpty() || item == u"/" || !status || mustStay(item, *status))
        return false;

    // The local files alone: the desktop's virtual file systems would want a session bus first.
    const QByteArray bytes = FileName::toBytes(item);
    GFile *file = g_vfs_get_file_for_path(g_vfs_get_local(), bytes.constData());
    GError *error = nullptr;
    const bool moved = g_file_trash(file, nullptr, &error);
    g_object_unref(file);
    if (error) {
        qCInfo(trashLog) << FileName::shown(item) << error->message;
        g_error_free(error);
    }
    return moved;
}
