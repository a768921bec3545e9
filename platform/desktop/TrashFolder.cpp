#include "platform/desktop/TrashFolder.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FolderMark.h"
#include "files/MountTable.h"
#include "files/PathText.h"
#include "files/StatxStatus.h"

#include <glib.h>

#include <QFile>
#include <QSet>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 LongestRecord = 64 * 1024; // bytes; a path is at most 4096, three for each

Descriptor openFolder(int at, const QByteArray &name)
{
    return Descriptor(
        ::openat(at, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

// Why nobody should trust the folder with files, or "".
QString distrust(int folder, FileIdentity *identity = nullptr)
{
    const auto status = statusOf(folder);
    if (!status)
        return QString::fromLocal8Bit(g_strerror(errno));
    if (identity)
        *identity = status->identity;
    if (status->owner != ::geteuid())
        return localized("It belongs to somebody else.");
    if ((status->mode & S_IWOTH) && !(status->mode & S_ISVTX))
        return localized("Everybody may write to it.");
    return {};
}

// The bytes that "%41" and the like stand for; nothing where that is no such text.
std::optional<QByteArray> decoded(const QByteArray &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? g_ascii_xdigit_value(text[i + 1]) : -1;
        const int low = high >= 0 ? g_ascii_xdigit_value(text[i + 2]) : -1;
        if (low < 0)
            return std::nullopt;
        bytes += char(high * 16 + low);
        i += 2;
    }
    return bytes;
}

// The place that a record's path means, or "".
QString placeOf(const QByteArray &path, const TrashPlace &trash)
{
    const auto bytes = decoded(path);
    if (!bytes || bytes->isEmpty() || bytes->contains('\0') || bytes->split('/').contains(".."))
        return {};
    const QString text = FileName::fromBytes(*bytes);
    const QString place =
        PathText::normalized(text.startsWith(u'/') ? text : PathText::joined(trash.base, text));
    const QString below = trash.base == u"/" ? trash.base : trash.base + u'/';
    const bool isOutside = trash.onVolume && !place.startsWith(below);
    const bool isInTrash = place == trash.folder || place.startsWith(trash.folder + u'/');
    return isOutside || isInTrash || place == u"/" || place == trash.base ? QString() : place;
}

} // namespace

TrashPlace TrashPlace::ofHome()
{
    const QString data = FileName::fromBytes(g_get_user_data_dir());
    return { PathText::joined(data, u"Trash"_s), data };
}

QList<TrashPlace> TrashPlace::atTop(const QString &top)
{
    const QString user = QString::number(::getuid());
    return { { PathText::joined(top, u".Trash/"_s + user), top, true },
             { PathText::joined(top, u".Trash-"_s + user), top, true } };
}

std::optional<TrashPlace> TrashPlace::of(const QString &folder)
{
    const TrashPlace home = ofHome();
    if (folder == home.folder)
        return home;
    const QString user = QString::number(::getuid());
    for (const QString &end : { u"/.Trash-"_s + user, u"/.Trash/"_s + user })
        if (folder.endsWith(end))
            return TrashPlace { folder, folder.chopped(qMin(end.size(), folder.size() - 1)), true };
    return std::nullopt;
}

QList<TrashPlace> TrashPlace::all()
{
    QList<TrashPlace> places { ofHome() };
    const MountTable table = MountTable::current();
    QSet<QString> seen;
    for (const Mount &mount : table.mounts()) {
        if (seen.contains(mount.point) || table.slowMountOnTheWay(mount.point))
            continue;
        seen.insert(mount.point);
        places += atTop(mount.point);
    }
    return places;
}

QList<TrashPlace> TrashPlace::ofVolumesOf(const QStringList &folders)
{
    QList<TrashPlace> places;
    const MountTable table = MountTable::current();
    QSet<QString> seen;
    for (const QString &folder : folders) {
        const Mount *mount = table.mountOf(folder);
        if (!mount || seen.contains(mount->point))
            continue;
        seen.insert(mount->point);
        places += atTop(mount->point);
    }
    return places;
}

std::optional<TrashFolder> TrashFolder::open(const TrashPlace &place, QString *why)
{
    TrashFolder trash;
    trash._place = place;
    const auto failed = [&](const QString &reason) {
        if (why)
            *why = reason;
        return std::nullopt;
    };
    const auto notOpened = [&] {
        return errno == ENOENT ? failed({})
            : errno == ELOOP || errno == ENOTDIR
            ? failed(localized("It is a link, or no folder."))
            : failed(QString::fromLocal8Bit(g_strerror(errno)));
    };
    const QString parent = PathText::parent(place.folder);
    const Descriptor above(
        ::open(FileName::toBytes(parent).constData(),
               O_PATH | O_DIRECTORY | O_CLOEXEC | (place.onVolume ? O_NOFOLLOW : 0)));
    if (!above.isOpen())
        return failed({});
    Descriptor folder =
        openFolder(above.number(), FileName::toBytes(PathText::lastComponent(place.folder)));
    if (!folder.isOpen())
        return notOpened();
    // In one for everybody others must not be able to put theirs in its place.
    const auto common = statusOf(above.number());
    if (place.onVolume && parent != place.base && !(common && (common->mode & S_ISVTX)))
        return failed(localized("It lies in a folder that has no sticky bit."));
    QString distrusted = distrust(folder.number(), &trash._identity);
    trash._files = openFolder(folder.number(), "files");
    if (distrusted.isEmpty() && !trash._files.isOpen())
        return notOpened();
    trash._info = openFolder(folder.number(), "info");
    if (distrusted.isEmpty())
        distrusted = distrust(trash._files.number());
    if (distrusted.isEmpty() && trash._info.isOpen())
        distrusted = distrust(trash._info.number());
    if (!distrusted.isEmpty())
        return failed(distrusted);
    trash._keepsInodes = ::keepsInodes(trash._files.number());
    trash._folder = std::move(folder);
    return trash;
}

TrashFolder::Record TrashFolder::parsed(const QByteArray &text, const TrashPlace &place)
{
    Record record;
    std::optional<QByteArray> path;
    std::optional<QByteArray> date;
    const auto lines = text.split('\n');
    for (const QByteArray &line : lines) {
        // Of several the first counts.
        if (!path && line.startsWith("Path="))
            path = line.mid(5);
        else if (!date && line.startsWith("DeletionDate="))
            date = line.mid(13).trimmed();
    }
    if (date)
        record.deleted = QDateTime::fromString(QString::fromLatin1(*date), Qt::ISODate);
    if (lines.first().trimmed() == "[Trash Info]" && path)
        record.origin = placeOf(*path, place);
    if (record.origin.isEmpty())
        record.broken = path ? localized("Its record tells no place to which it could go back.")
                             : localized("No record tells where it was.");
    return record;
}

TrashFolder::Record TrashFolder::record(const QByteArray &name) const
{
    const Descriptor opened(::openat(_info.number(), name + ".trashinfo",
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    const auto status = opened.isOpen() ? statusOf(opened.number()) : std::nullopt;
    QByteArray text;
    if (status && status->kind == FileKind::Regular && status->size <= LongestRecord) {
        text.resize(status->size);
        const ssize_t size = ::read(opened.number(), text.data(), size_t(text.size()));
        text.truncate(qMax<ssize_t>(size, 0));
    }
    return parsed(text, _place);
}

Descriptor TrashFolder::expunged(IfMissing missing) const
{
    if (missing == IfMissing::Make)
        ::mkdirat(_folder.number(), "expunged", 0700);
    Descriptor opened = openFolder(_folder.number(), "expunged");
    if (opened.isOpen() && !distrust(opened.number()).isEmpty())
        return Descriptor();
    return opened;
}

void TrashFolder::removeRecord(const QByteArray &name) const
{
    ::unlinkat(_info.number(), name + ".trashinfo", 0);
}
