#include "commands/FolderCommands.h"

#include "commands/FileClipboard.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;

FolderCommands::FolderCommands(PaneWindow &paneWindow, const MainModel &model,
                               const FileQueries &fileQueries, const Workspace &desktop,
                               Alerts &alertsToAsk, AskForFolder ask)
    : window(paneWindow)
    , mainModel(model)
    , queries(fileQueries)
    , workspace(desktop)
    , alerts(alertsToAsk)
    , _askForFolder(std::move(ask))
{
}

void FolderCommands::go(Side side, const QString &path)
{
    mainModel.showFolder(side, { .path = path, .item = PathText::lastComponent(path) });
}

void FolderCommands::homeFolderClicked(Side menu)
{
    go(menu, PathText::homeFolder());
}

void FolderCommands::volumesClicked(Side menu)
{
    // Kept: the left pane is looked at first, so the right navigator's menu sends the left pane
    // there while that one is active.
    const PaneTable *active = window.getFirstResponderTableView();
    const bool left = menu == Side::Left || (active && active->side() == Side::Left);
    mainModel.showFolder(left ? Side::Left : Side::Right,
                         { .path = workspace.volumesFolder(), .item = u"Volumes"_s });
}

void FolderCommands::otherFolderClicked(Side menu)
{
    const QString typed = _askForFolder(localized("Please enter full path to folder:"),
                                        window.getCurrentPathFromSegmentedControl(menu));
    if (typed.isEmpty())
        return;
    const QString path = PathText::fromTyped(typed);
    if (queries.isDirectory(path))
        return go(menu, path);
    const auto error = queries.whyNotThere(path);
    alerts.ask(Alert::failure(
        localized("Folder does not exists!"),
        FileName::shown(path.isEmpty() ? typed : path) + u'\n'
            + (error ? QString::fromStdString(error.message()) : localized("It is no folder.")),
        localized("Ok")));
}

void FolderCommands::useOpositePath(Side menu)
{
    go(menu, window.getCurrentPathFromSegmentedControl(otherSide(menu)));
}

void FolderCommands::copyPathClicked(Side menu)
{
    FileClipboard::putText({ window.getCurrentPathFromSegmentedControl(menu) });
}

void FolderCommands::copyLocalizedPathClicked(Side menu)
{
    FileClipboard::putText(
        { queries.getLocalizedPath(window.getCurrentPathFromSegmentedControl(menu)) });
}
