#include "operations/Refusal.h"

#include "base/Localized.h"
#include "files/FileFlags.h"
#include "files/PathText.h"
#include "files/SameFile.h"
#include "operations/SmallPrint.h"

namespace {

bool isLink(const FileStatus &status)
{
    return status.kind == FileKind::Symlink;
}

} // namespace

QString refusalOf(const QString &source, const std::optional<FileStatus> &given,
                  const QString &target, const std::optional<FileStatus> &standing,
                  Operation operation)
{
    if (operation == Operation::Move && given && FileFlags::isLocked(source, *given))
        return localized("The item is locked.");
    if (isFolder(given) && SameFile::isInside(PathText::parent(target), source))
        return localized("A folder cannot be put into itself.");
    if (!standing)
        return {};
    // A link replaces another one that leads to the same place.
    const bool links = given && isLink(*given) && isLink(*standing);
    if (links ? given->identity == standing->identity
              : SameFile::isSame(source, given, target, standing))
        return localized("Both are the same item.");
    if (FileFlags::isLocked(target, *standing))
        return localized("The existing item is locked.");
    if (isFolder(standing) && SameFile::isInside(PathText::parent(source), target))
        return localized("The existing item holds the new one.");
    return {};
}

QStringList removalRefusals(const OperationRequest &request,
                            const std::function<QString(const QString &name)> &byTrash)
{
    QStringList refused;
    for (const QString &name : request.items) {
        const QString reason = !PathText::isItemName(name) ? localized("It is no item.")
            : FileFlags::isLocked(PathText::joined(request.source, name))
            ? localized("The item is locked.")
            : byTrash(name);
        if (!reason.isEmpty())
            refused.append(lineAbout(name, reason));
    }
    return refused;
}
