#include "model/FileQueries.h"

#include "base/Localized.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/HiddenRule.h"
#include "files/LinkFile.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "files/SmallFile.h"
#include "files/VolumeLabel.h"
#include "files/Waiting.h"
#include "platform/Workspace.h"
#include "widgets/FileKinds.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 Oversized = 52428800; // bytes: 50 MiB
constexpr qint64 TypeBytes = 16384; // all that the rules of types look at

// On a worker: what each question asks of the disk.

bool isFolderAt(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    return status && status->kind == FileKind::Directory
        && !FileKinds::isPackageName(PathText::lastComponent(path));
}

bool isPackageAt(const QString &path, Links links)
{
    // Kept: true for every folder, package or not.
    const auto status = fileStatus(path, links);
    return status && status->kind == FileKind::Directory;
}

QString resolvedAlias(const QString &path)
{
    QString resolved = path;
    // Aliases may lead to aliases; a ring of them resolves to nothing.
    for (int step = 0; step < 16; ++step) {
        const auto target = LinkFile::target(resolved);
        if (!target)
            return exists(resolved) ? resolved : path;
        resolved = *target;
    }
    return path;
}

bool isApplicationAt(const QString &path, const Workspace &desktop)
{
    const QString extension = PathText::extension(path);
    return extension == u"app"_s || extension.compare(u"AppDir"_s, Qt::CaseInsensitive) == 0
        || desktop.isInstalledApplication(path);
}

QString nearestFolderTo(QString path)
{
    while (path != u"/"_s) {
        const auto status = fileStatus(path, Links::Follow);
        // One that cannot be looked at is not gone.
        if (status ? status->kind == FileKind::Directory : errno != ENOENT && errno != ENOTDIR)
            break;
        path = PathText::parent(path);
        if (path.isEmpty())
            path = u"/"_s;
    }
    return path;
}

// An item's own status and whether it is a link that leads nowhere.
struct Looked {
    std::optional<FileStatus> status;
    bool isDangling = false;
};

Looked lookAt(const QString &path, Links links)
{
    const auto status = fileStatus(path, links);
    return status ? Looked { status } : Looked { fileStatus(path, Links::NoFollow), true };
}

} // namespace

FileQueries::FileQueries(Workspace &workspaceInUse, const FileKinds &fileKinds, Waiting &asker)
    : workspace(workspaceInUse)
    , kinds(fileKinds)
    , waiting(asker)
{
}

std::optional<FileQueries::Item> FileQueries::itemAt(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return Item { fileStatus(path, Links::NoFollow) }; });
}

std::error_code FileQueries::whyNotThere(const QString &path) const
{
    return waiting
        .forAnswer(path,
                   [path] {
                       return fileStatus(path, Links::Follow)
                           ? std::error_code()
                           : std::error_code(errno, std::generic_category());
                   })
        .value_or(std::make_error_code(std::errc::timed_out));
}

std::optional<bool> FileQueries::isSameItem(const QString &a, const QString &b) const
{
    // One after the other: either can be on a server that is gone.
    if (!waiting.forAnswer(b, [b] { return exists(b); }))
        return std::nullopt;
    return waiting.forAnswer(a, [a, b] { return SameFile::isSame(a, b); });
}

std::optional<QString> FileQueries::nearestFolder(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return nearestFolderTo(path); });
}

std::optional<FileQueries::Opened> FileQueries::lookAtOpened(const QString &path) const
{
    return waiting.forAnswer(path, [path, links = linksAsSet(), desktop = &workspace] {
        const QString resolved = resolvedAlias(path);
        return Opened { resolved, isFolderAt(resolved), isFolderAt(path), isPackageAt(path, links),
                        isApplicationAt(path, *desktop) };
    });
}

bool FileQueries::isApplication(const QString &path) const
{
    return waiting
        .forAnswer(path, [path, desktop = &workspace] { return isApplicationAt(path, *desktop); })
        .value_or(false);
}

bool FileQueries::isFileHidden(const QString &path) const
{
    return waiting
        .forAnswer(path,
                   [path] {
                       return HiddenRule(PathText::parent(path))
                                  .hidesName(FileName::toBytes(PathText::lastComponent(path)))
                           || !exists(path) || HiddenRule::hides(FileFlags::marks(path));
                   })
        .value_or(true);
}

bool FileQueries::isDirectory(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return isFolderAt(path); }).value_or(false);
}

bool FileQueries::isPackage(const QString &path) const
{
    return waiting
        .forAnswer(path, [path, links = linksAsSet()] { return isPackageAt(path, links); })
        .value_or(false);
}

bool FileQueries::isItemFolderOrOversized(const QString &path) const
{
    return waiting
        .forAnswer(path,
                   [path, links = linksAsSet()] {
                       if (isFolderAt(path))
                           return true;
                       const auto status = fileStatus(path, links);
                       // Kept: the size is read as 32 bits with a sign, so 2 GiB count as not
                       // oversized.
                       return status && qint32(quint32(quint64(status->size))) > Oversized;
                   })
        .value_or(false);
}

bool FileQueries::isSymbolicLink(const QString &path) const
{
    return waiting
        .forAnswer(path,
                   [path] {
                       const auto status = fileStatus(path, Links::NoFollow);
                       return status && status->kind == FileKind::Symlink;
                   })
        .value_or(false);
}

QString FileQueries::pathContentOfSymbolicLinkAtPath(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return linkTarget(path).value_or(QString()); })
        .value_or(QString());
}

QString FileQueries::getPathContentOfSymbolicLinkAtPath(const QString &path) const
{
    return pathContentOfSymbolicLinkAtPath(path);
}

bool FileQueries::isAlias(const QString &path) const
{
    return waiting
        .forAnswer(path,
                   [path] {
                       return exists(path)
                           && (LinkFile::target(path) || FileFlags::marks(path).alias);
                   })
        .value_or(false);
}

QString FileQueries::resolveAliasPath(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return resolvedAlias(path); }).value_or(path);
}

int FileQueries::finderLabelColorOfPath(const QString &path) const
{
    return waiting.forAnswer(path, [path] { return labelOfBits(FileFlags::marks(path).labelBits); })
        .value_or(0);
}

int FileQueries::labelOfBits(int bits)
{
    static constexpr int Labels[] = { 0, 7, 4, 6, 5, 3, 1, 2 };
    return Labels[(bits & FileFlags::LabelMask) >> 1];
}

QColor FileQueries::finderLabelColor(int label)
{
    switch (label) {
    case 1:
        return { 255, 80, 80 };
    case 2:
        return { 255, 207, 0 };
    case 3:
        return { 255, 255, 80 };
    case 4:
        return { 80, 255, 80 };
    case 5:
        return { 80, 80, 255 };
    case 6:
        return { 255, 80, 255 };
    case 7:
        return { 200, 200, 200 };
    default:
        return { 0, 0, 0 };
    }
}

QString FileQueries::getFileType(const QString &path) const
{
    // By pointer: the kinds outlive every question.
    return waiting
        .forAnswer(path,
                   [path, links = linksAsSet(), kindsInUse = &kinds] {
                       const QString name = PathText::lastComponent(path);
                       const Looked item = lookAt(path, links);
                       if (!item.status)
                           return u"--"_s;
                       const bool isFile = item.status->kind == FileKind::Regular;
                       const QByteArray start = isFile ? startOfFile(path, TypeBytes) : "";
                       // Without a start a file is empty, or closed to us.
                       if (isFile && start.isEmpty() == (item.status->size == 0))
                           return FileKinds::kindTextByContent(name, start);
                       return kindsInUse->kindText(name, item.status->kind, item.isDangling);
                   })
        .value_or(u"--"_s);
}

QString FileQueries::getApplicationForFile(const QString &path) const
{
    // By pointer: the desktop outlives every question.
    const QString application =
        waiting
            .forAnswer(path,
                       [path, desktop = &workspace] { return desktop->applicationForFile(path); })
            .value_or(QString());
    return application.isEmpty() ? localized("Not available") : application;
}

QIcon FileQueries::getIconForFile(const QString &path) const
{
    const auto item =
        waiting.forAnswer(path, [path, links = linksAsSet()] { return lookAt(path, links); })
            .value_or(Looked());
    return item.status
        ? kinds.icon(PathText::lastComponent(path), item.status->kind, item.isDangling)
        : QIcon();
}

QString FileQueries::getLocalizedPath(const QString &path) const
{
    QStringList components = PathText::components(path);
    const QStringList volumes = PathText::components(workspace.volumesFolder());
    if (!volumes.isEmpty() && components.mid(0, volumes.size()) == volumes)
        components[volumes.size() - 1] = localized("Volumes");
    if (components.value(0) == u"/"_s) {
        const QString label = startVolumeLabel();
        components[0] = label.isEmpty() ? localized("File System") : label;
    }
    return PathText::fromComponents(components);
}

QString FileQueries::getPathComponents(const QString &path, int toIndex)
{
    return PathText::fromComponents(PathText::components(path).mid(0, toIndex + 1));
}

QString FileQueries::getPathComponent(const QString &path, int fromIndex)
{
    return PathText::components(path).value(fromIndex);
}

QString FileQueries::getMountedLocalVolumePath(int index) const
{
    return workspace.mountedLocalVolumePaths().value(index);
}

bool FileQueries::isVolumeMounted(const QString &path) const
{
    return workspace.mountedLocalVolumePaths().contains(path);
}

bool FileQueries::unmountVolume(const QString &path, QString *reason) const
{
    return workspace.eject(path, reason);
}

QDateTime FileQueries::getDateForFile(const QString &path) const
{
    const auto status =
        waiting.forAnswer(path, [path, links = linksAsSet()] { return fileStatus(path, links); })
            .value_or(std::nullopt);
    return status ? QDateTime::fromMSecsSinceEpoch(status->modified / 1'000'000) : QDateTime();
}

bool FileQueries::isStringInSubstring(const QString &text, const QString &search,
                                      Qt::CaseSensitivity sensitivity)
{
    return !text.isNull() && !search.isNull() && text.contains(search, sensitivity);
}
