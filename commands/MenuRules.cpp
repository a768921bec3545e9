#include "commands/MenuRules.h"

#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/RowSet.h"

using namespace Qt::StringLiterals;

bool always(const MenuState &)
{
    return true;
}

bool onItem(const MenuState &state)
{
    return state.selectedRow && isItemRow(*state.selectedRow);
}

bool onFile(const MenuState &state)
{
    return onItem(state) && !state.queries.isDirectory(state.path);
}

bool onPackage(const MenuState &state)
{
    return state.queries.isPackage(state.path) && !state.queries.isDirectory(state.path);
}

bool onArchive(const MenuState &state)
{
    // Kept: not "cpgz", although unpacking takes it.
    const QString extension = PathText::extension(state.path);
    return extension == u"zip"_s || extension == u"gzip"_s;
}

bool onVolume(const MenuState &state)
{
    return onItem(state) && state.queries.isDirectory(state.path)
        && state.queries.isVolumeMounted(state.path);
}

bool onFolderOrNothing(const MenuState &state)
{
    return state.selectedRow && (*state.selectedRow < 0 || state.queries.isDirectory(state.path));
}

bool canGoBack(const MenuState &state)
{
    return state.hasBack;
}

bool canGoForward(const MenuState &state)
{
    return state.hasForward;
}
