#include "operations/DuplicateName.h"

#include "base/Localized.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

namespace {

QString withTail(const QString &name, bool isFolder, const QString &tail)
{
    if (isFolder)
        return name + tail;
    const QString extension = PathText::extension(name);
    const QString copy = PathText::withoutExtension(name) + tail;
    return extension.isEmpty() ? copy : PathText::withExtension(copy, extension);
}

} // namespace

QString nameOfDuplicate(const QString &name, bool isFolder)
{
    return withTail(name, isFolder, localized(" Copy"));
}

QString freeNameOfDuplicate(const QString &folder, const QString &name)
{
    const auto status = fileStatus(PathText::joined(folder, name), Links::Follow);
    const bool isFolder = status && status->kind == FileKind::Directory;
    QString free = nameOfDuplicate(name, isFolder);
    for (int number = 2; exists(PathText::joined(folder, free)); ++number)
        free = withTail(name, isFolder, localized(" Copy") + QStringLiteral(" %1").arg(number));
    return free;
}
