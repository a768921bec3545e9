#include "model/MainModel.h"

#include "base/CoreDumps.h"
#include "base/Localized.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/CurrentRows.h"
#include "model/FileQueries.h"
#include "model/PaneSettings.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"
#include "settings/UserDefaults.h"

#include <algorithm>

MainModel::MainModel(MessageBus &messages, UserDefaults &userDefaults, Alerts &alertsToAsk,
                     FileQueries &fileQueries, Launching &launcher, const FileKinds &fileKinds,
                     Waiting &asker)
    : bus(messages)
    , defaults(userDefaults)
    , alerts(alertsToAsk)
    , queries(fileQueries)
    , launching(launcher)
    , kinds(fileKinds)
    , waiting(asker)
{
    bus.subscribe(DirectoryChanged, this, &MainModel::fillFileList);
    bus.subscribe(GetRows, this, &MainModel::getRows);
    bus.subscribe(GetRowCount, this, &MainModel::getRowCount);
    bus.subscribe(GotoNextDirectory, this, &MainModel::gotoNextDirectory);
    bus.subscribe(ShowInfo, this, &MainModel::showItemInfo);
    bus.subscribe(CopyItem, this, &MainModel::copyItem);
    bus.subscribe(MoveItem, this, &MainModel::moveItem);
    bus.subscribe(NewFolder, this, &MainModel::newFolder);
    bus.subscribe(DeleteItem, this, &MainModel::deleteItem);
    bus.subscribe(RenameItem, this, &MainModel::renameItem);
    bus.subscribe(OpenFileWithApplication, this, &MainModel::openFileWithApplication);
}

MainModel::~MainModel()
{
    bus.unsubscribe(this);
}

void MainModel::setUserDefaultValues()
{
    _options = ListingOptions::fromDefaults(defaults);
    queries.setTraverseLinks(_options.traverseLinks);
    windowController->setMenuItemShowHiddenItems(
        _options.showHiddenFiles ? localized("Hide system files") : localized("Show system files"));
}

void MainModel::awakeFromNib()
{
    if (defaults.boolean(Settings::EnableCoreDumps).value_or(false))
        enableCoreDumps();
    setUserDefaultValues();
    setInsideBundle(false);
    constexpr Side panes[] = { Side::Left, Side::Right };
    for (const Side side : panes) {
        if (const auto stored = defaults.dictionary(paneSettings(side).selectedItems))
            _selectedItems[side] = SelectionMemory::fromDictionary(*stored);
    }
    for (const Side side : panes) {
        QString path = defaults.string(paneSettings(side).lastPath).value_or(QString());
        if (const auto &start = _startFolders[side])
            path = start->path;
        showFolder(side, { .path = path });
        if (rows(side).isEmpty()) // nobody answered for it
            bus.post(DirectoryChanged[side], { .path = PathText::homeFolder() });
    }
    for (const Side side : panes) {
        const SortOrder order = storedSortOrder(defaults, side);
        sortRowEntries(order.column, side, order.direction);
        // Sorting moved the rows.
        const auto &start = _startFolders[side];
        const int row = start && !start->selectedName.isEmpty()
            ? int(rows(side).rowOfName(start->selectedName))
            : ParentRow;
        PaneTable &table = windowController->getTableView(side);
        table.selectRow(qMax(row, ParentRow));
        table.scrollToRow(qMax(row, ParentRow));
    }
}

QString MainModel::dateFormat() const
{
    return defaults
        .string(useLongDateFormat() ? Settings::TimeDateFormat : Settings::ShortTimeDateFormat)
        .value_or(QString());
}

void MainModel::sortRowEntries(Column column, Side side, SortDirection direction)
{
    _sortingDirection = direction;
    setRows(side, sorted(wholeRows(side), column, direction));
    windowController->getTableView(side).setSortIndicator(column, direction);
    bus.post(TableViewSelectionDidChange, { side });
}

void MainModel::setRows(Side side, const Listing &whole)
{
    show(side,
         waiting.forRows(isFiltered(side) ? whole.size() : 0, localized("Filtering..."),
                         [before = _rows[side], whole] { return before.of(whole); }));
}

void MainModel::setFilter(Side side, const QString &text)
{
    const NameFilter filter(text);
    if (filter.text() == _rows[side].filter().text())
        return;
    PaneTable &table = windowController->getTableView(side);
    const FilteredListing before = _rows[side];
    const FilteredListing now =
        waiting.forRows(before.whole().size(), localized("Filtering..."),
                        [before, filter] { return before.through(filter); });
    ShownRows shown = before.rowsIn(now, table.shownRows());
    // What is looked for is found: the next command is about it.
    const bool anyItem = !shown.selected.isEmpty() && isItemRow(shown.selected.last());
    if (filter.isOn() && !anyItem && now.shown().holds(FirstItemRow))
        shown = { { FirstItemRow }, FirstItemRow, ParentRow };
    show(side, now);
    table.showRows(shown);
    table.scrollToRow(shown.current); // also among all the rows that come back
}

void MainModel::show(Side side, const FilteredListing &rows)
{
    Q_EMIT rowsAboutToChange(side);
    _rows[side] = rows;
    Q_EMIT rowsChanged(side);
}

void MainModel::updateRows(Side side, const Listing &now, const std::optional<RowChanges> &changes)
{
    constexpr qsizetype Few = 16; // beyond it the table is sooner done with all its rows anew
    constexpr qsizetype FewSelected = 100;
    PaneTable &table = windowController->getTableView(side);
    const Listing before = rows(side);
    const ShownRows shown = table.shownRows();
    table.setQuiet(true);
    // Which of the shown rows changed is known where all of them are shown.
    const bool known = changes && !isFiltered(side);
    if (known && shown.selected.size() <= FewSelected
        && rangesOf(changes->removed).size() + rangesOf(changes->inserted).size() <= Few) {
        _rows[side] = _rows[side].of(now);
        table.changeRows(*changes);
        Q_EMIT fewRowsChanged(side);
    } else {
        setRows(side, now);
    }
    ShownRows found = known ? changes->rowsNow(shown) : rowsNow(shown, before, rows(side));
    // Behind the last that is gone.
    found.current = std::min(found.current, int(rows(side).size()) - 1);
    table.showRows(found);
    table.setQuiet(false);
    if (!known || changes->touch(shown.selected))
        bus.post(TableViewSelectionDidChange, { side });
}

Listing MainModel::sorted(const Listing &listing, Column column, SortDirection direction) const
{
    return waiting.forRows(listing.size(), localized("Sorting..."),
                           [=] { return listing.sorted(column, direction); });
}

ShownRows MainModel::rowsNow(const ShownRows &shown, const Listing &seen, const Listing &now) const
{
    return waiting.forRows(shown.selected.size(), localized("Comparing..."),
                           [=] { return currentRows(shown, seen, now); });
}

int MainModel::getRowFromValueInFileList(Side side, const QString &path) const
{
    return int(rows(side).rowOfPath(path));
}
