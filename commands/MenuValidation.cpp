#include "commands/MenuValidation.h"

#include "files/PathText.h"
#include "model/FileQueries.h"

using namespace Qt::StringLiterals;

bool isRow(std::optional<int> selectedRow)
{
    return selectedRow && *selectedRow > 0;
}

bool validateMenuItem(CommandItem item, const MenuState &state, const FileQueries &queries)
{
    const bool row = isRow(state.selectedRow);
    const QString &path = state.path;
    switch (item) {
    case CommandItem::Copy:
    case CommandItem::Move:
    case CommandItem::Rename:
    case CommandItem::Delete:
    case CommandItem::Duplicate:
    case CommandItem::Open:
    case CommandItem::CreateArchive:
        return row;
    case CommandItem::OpenWith:
        return row && !queries.isDirectory(path);
    case CommandItem::PackageContent:
        return queries.isPackage(path) && !queries.isDirectory(path);
    case CommandItem::Unpack: {
        // Kept: not "cpgz", although unpacking takes it.
        const QString extension = PathText::extension(path);
        return extension == u"zip"_s || extension == u"gzip"_s;
    }
    case CommandItem::Eject:
        return row && queries.isDirectory(path) && queries.isVolumeMounted(path);
    case CommandItem::NewFolder:
    case CommandItem::Reload:
    case CommandItem::ShowClassicButtons:
        return true;
    }
    return false;
}
