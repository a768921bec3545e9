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
        if (_rows[side].isEmpty()) // nobody answered for it
            bus.post(DirectoryChanged[side], { .path = PathText::homeFolder() });
    }
    for (const Side side : panes) {
        const SortOrder order = storedSortOrder(defaults, side);
        sortRowEntries(order.column, side, order.direction);
        // Sorting moved the rows.
        const auto &start = _startFolders[side];
        const int row = start && !start->selectedName.isEmpty()
            ? int(_rows[side].rowOfName(start->selectedName))
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
    const Listing rows = sorted(_rows[side], column, direction);
    Q_EMIT rowsAboutToChange(side);
    _rows[side] = rows;
    Q_EMIT rowsChanged(side);
    windowController->getTableView(side).setSortIndicator(column, direction);
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
    return int(_rows[side].rowOfPath(path));
}
