#include "commands/NavigationCommands.h"

#include "files/PathText.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;
using Way = FolderHistory::Way;

namespace {

bool isOnTheWay(const QString &folder, const QString &path)
{
    const QStringList above = PathText::components(folder);
    return PathText::components(path).mid(0, above.size()) == above;
}

} // namespace

NavigationCommands::NavigationCommands(PaneWindow &paneWindow, const MainModel &model)
    : window(paneWindow)
    , mainModel(model)
{
    connect(&mainModel, &MainModel::rowsAboutToChange, this,
            &NavigationCommands::rowsAboutToChange);
    connect(&mainModel, &MainModel::rowsChanged, this, &NavigationCommands::rowsChanged);
}

void NavigationCommands::backClicked()
{
    goOfActivePane(Way::Back);
}

void NavigationCommands::forwardClicked()
{
    goOfActivePane(Way::Forward);
}

void NavigationCommands::goOfActivePane(Way way)
{
    if (const PaneTable *active = window.getFirstResponderTableView())
        go(active->side(), way);
}

void NavigationCommands::go(Side side, Way way)
{
    FolderHistory &history = _histories[side];
    const QString from = mainModel.folder(side);
    // Of a folder that is gone the nearest is shown. Where that is the one that the pane shows
    // already, what lies beyond is meant.
    while (const FolderHistory::Place *next = history.next(way)) {
        const FolderHistory::Place place = *next;
        // Along the path that stands over the pane its deeper segments stay, as they do going up.
        std::optional<QString> item;
        if (isOnTheWay(place.folder, window.completeNavigatorPath(side)))
            item = u".."_s;
        const QScopedValueRollback travel(_travel, std::optional(Travel { side }));
        mainModel.showFolder(side, { .path = place.folder, .item = item });
        if (!_travel->hasArrived)
            return; // given up: the pane stays where it was
        const QString shown = mainModel.folder(side);
        history.travelled(way, shown);
        if (const auto row = mainModel.rows(side).rowOfName(place.selected);
            shown == place.folder && isItemRow(int(row))) {
            window.getTableView(side).selectRow(int(row));
            window.getTableView(side).scrollToRow(int(row));
        }
        if (shown != from)
            return;
    }
}

void NavigationCommands::rowsAboutToChange(Side side)
{
    if (_travel && _travel->side == side && _travel->hasArrived)
        return; // the history still stands at the folder before
    const Listing &rows = mainModel.rows(side);
    const int row = window.getTableView(side).selectedRow();
    _histories[side].select(isItemRow(row) && rows.holds(row) ? rows[row].name() : QString());
}

void NavigationCommands::rowsChanged(Side side)
{
    if (_travel && _travel->side == side)
        _travel->hasArrived = true;
    else
        _histories[side].arrive(mainModel.folder(side));
}

void NavigationCommands::swapPanesClicked()
{
    const Listing left = mainModel.rowsLeft();
    const Listing right = mainModel.rowsRight();
    if (left.isEmpty() || right.isEmpty())
        return; // nobody answered for it yet
    const ShownRows leftShown = window.getTableView(Side::Left).shownRows();
    const ShownRows rightShown = window.getTableView(Side::Right).shownRows();
    // Whether the pane shows it now: nobody may have answered for it.
    const auto take = [this](Side side, const Listing &seen, const ShownRows &shown) {
        mainModel.showFolder(side, { .path = seen.folder() });
        const Listing now = mainModel.rows(side);
        if (now.folder() != seen.folder())
            return false;
        window.getTableView(side).showRows(mainModel.rowsNow(shown, seen, now));
        return true;
    };
    if (take(Side::Left, right, rightShown) && !take(Side::Right, left, leftShown))
        take(Side::Left, left, leftShown);
}

void NavigationCommands::sameFolderInBothClicked()
{
    const PaneTable *active = window.getFirstResponderTableView();
    if (!active)
        return;
    const Side other = otherSide(active->side());
    const QString folder = mainModel.folder(active->side());
    if (mainModel.folder(other) != folder)
        mainModel.showFolder(other, { .path = folder, .item = PathText::lastComponent(folder) });
}
