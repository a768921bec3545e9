#include "model/MainModel.h"

#include "base/Localized.h"
#include "model/CoreDumps.h"
#include "model/FileQueries.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

MainModel::MainModel(MessageBus &messages, UserDefaults &userDefaults, Alerts &alertsToAsk,
                     FileQueries &fileQueries, Launching &launcher, const FileKinds &fileKinds)
    : bus(messages)
    , defaults(userDefaults)
    , alerts(alertsToAsk)
    , queries(fileQueries)
    , launching(launcher)
    , kinds(fileKinds)
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
    struct PaneKeys {
        Side side;
        Settings::Key selectedItems;
        Settings::Key lastPath;
        Settings::Key sortedColumn;
        Settings::Key sortingDirection;
    };
    const PaneKeys panes[] = {
        { Side::Left, Settings::SelectedItemsLeft, Settings::LeftFileListLastPath,
          Settings::LeftFileListSortedColumn, Settings::LeftFileListSortingDirection },
        { Side::Right, Settings::SelectedItemsRight, Settings::RightFileListLastPath,
          Settings::RightFileListSortedColumn, Settings::RightFileListSortingDirection },
    };
    if (defaults.boolean(Settings::EnableCoreDumps).value_or(false))
        enableCoreDumps();
    setUserDefaultValues();
    setInsideBundle(false);
    for (const PaneKeys &pane : panes) {
        if (const auto stored = defaults.dictionary(pane.selectedItems))
            _selectedItems[pane.side] = SelectionMemory::fromDictionary(*stored);
    }
    for (const PaneKeys &pane : panes) {
        QString path = defaults.string(pane.lastPath).value_or(QString());
        if (const auto &start = _startFolders[pane.side])
            path = start->path;
        bus.post(DirectoryChanged[pane.side], { .path = path });
    }
    for (const PaneKeys &pane : panes) {
        Column column = columnFromIdentifier(defaults.string(pane.sortedColumn).value_or(QString()))
                            .value_or(Column::Name);
        if (column == Column::Icon)
            column = Column::Name; // nothing is sorted by icons
        const bool ascending = defaults.boolean(pane.sortingDirection).value_or(false);
        sortRowEntries(column, pane.side,
                       ascending ? SortDirection::Ascending : SortDirection::Descending);
        // Sorting moved the rows.
        const auto &start = _startFolders[pane.side];
        const int row = start && !start->selectedName.isEmpty()
            ? int(_rows[pane.side].rowOfName(start->selectedName))
            : ParentRow;
        PaneTable &table = windowController->getTableView(pane.side);
        table.selectRow(qMax(row, ParentRow));
        table.scrollToRow(qMax(row, ParentRow));
    }
}

void MainModel::sortRowEntries(Column column, Side side, SortDirection direction)
{
    _sortingDirection = direction;
    Q_EMIT rowsAboutToChange(side);
    _rows[side] = _rows[side].sorted(column, direction);
    Q_EMIT rowsChanged(side);
    windowController->getTableView(side).setSortIndicator(column, direction);
    bus.post(TableViewSelectionDidChange, { side });
}

int MainModel::getRowFromValueInFileList(Side side, const QString &path) const
{
    return int(_rows[side].rowOfPath(path));
}
