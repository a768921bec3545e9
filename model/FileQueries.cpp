#include "model/FileQueries.h"

#include "base/Localized.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/HiddenRule.h"
#include "files/LinkFile.h"
#include "files/PathText.h"
#include "files/VolumeLabel.h"
#include "platform/Workspace.h"
#include "widgets/FileKinds.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 Oversized = 52428800; // bytes: 50 MiB

} // namespace

FileQueries::FileQueries(Workspace &workspaceInUse, const FileKinds &fileKinds)
    : workspace(workspaceInUse)
    , kinds(fileKinds)
{
}

bool FileQueries::isFileHidden(const QString &path) const
{
    return HiddenRule(PathText::parent(path))
               .hidesName(FileName::toBytes(PathText::lastComponent(path)))
        || !exists(path) || HiddenRule::hides(FileFlags::marks(path));
}

bool FileQueries::isDirectory(const QString &path) const
{
    const auto status = fileStatus(path, Links::Follow);
    return status && status->kind == FileKind::Directory
        && !FileKinds::isPackageName(PathText::lastComponent(path));
}

bool FileQueries::isPackage(const QString &path) const
{
    // Kept: true for every folder, package or not.
    const auto status = fileStatus(path, linksAsSet());
    return status && status->kind == FileKind::Directory;
}

bool FileQueries::isItemFolderOrOversized(const QString &path) const
{
    if (isDirectory(path))
        return true;
    const auto status = fileStatus(path, linksAsSet());
    // Kept: the size is read as 32 bits with a sign, so 2 GiB count as not oversized.
    return status && qint32(quint32(quint64(status->size))) > Oversized;
}

bool FileQueries::isSymbolicLink(const QString &path) const
{
    const auto status = fileStatus(path, Links::NoFollow);
    return status && status->kind == FileKind::Symlink;
}

QString FileQueries::pathContentOfSymbolicLinkAtPath(const QString &path) const
{
    return linkTarget(path).value_or(QString());
}

QString FileQueries::getPathContentOfSymbolicLinkAtPath(const QString &path) const
{
    return pathContentOfSymbolicLinkAtPath(path);
}

bool FileQueries::isAlias(const QString &path) const
{
    return exists(path) && (LinkFile::target(path) || FileFlags::marks(path).alias);
}

QString FileQueries::resolveAliasPath(const QString &path) const
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

int FileQueries::finderLabelColorOfPath(const QString &path) const
{
    return labelOfBits(FileFlags::marks(path).labelBits);
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
    const auto status = fileStatus(path, linksAsSet());
    const auto itself = status ? status : fileStatus(path, Links::NoFollow);
    return itself ? kinds.kindText(PathText::lastComponent(path), itself->kind, !status) : u"--"_s;
}

QString FileQueries::getApplicationForFile(const QString &path) const
{
    const QString application = workspace.applicationForFile(path);
    return application.isEmpty() ? localized("Not available") : application;
}

QIcon FileQueries::getIconForFile(const QString &path) const
{
    const auto status = fileStatus(path, linksAsSet());
    const auto itself = status ? status : fileStatus(path, Links::NoFollow);
    return itself ? kinds.icon(PathText::lastComponent(path), itself->kind, !status) : QIcon();
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

bool FileQueries::unmountVolume(const QString &path) const
{
    return workspace.eject(path);
}

QDateTime FileQueries::getDateForFile(const QString &path) const
{
    const auto status = fileStatus(path, linksAsSet());
    return status ? QDateTime::fromMSecsSinceEpoch(status->modified / 1'000'000) : QDateTime();
}

bool FileQueries::isStringInSubstring(const QString &text, const QString &search,
                                      Qt::CaseSensitivity sensitivity)
{
    return !text.isNull() && !search.isNull() && text.contains(search, sensitivity);
}
