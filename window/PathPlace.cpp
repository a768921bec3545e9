#include "window/PathPlace.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

PathPlace placeOf(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    if (!status || status->kind != FileKind::Directory) {
        if (exists(path)) // also a dangling link: it stands in its folder
            return { .folder = PathText::parent(path), .selected = PathText::lastComponent(path) };
        return { .complaint = filled(localized("'%@' does not exist"), FileName::shown(path)) };
    }
    DirectoryReader reader;
    if (const auto error = reader.open(path))
        return { .complaint = filled(localized("'%@' cannot be read (%@)"), FileName::shown(path),
                                     QString::fromStdString(error.message())) };
    return { .folder = path };
}
