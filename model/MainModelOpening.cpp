#include "model/MainModel.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FolderWatch.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/CurrentRows.h"
#include "model/FileQueries.h"
#include "model/Launching.h"
#include "model/PaneWindow.h"

using namespace Qt::StringLiterals;

void MainModel::fillFileList(Side side, const FolderChange &change)
{
    const QString path = change.path.isEmpty() ? PathText::homeFolder() : change.path;
    PaneTable &table = windowController->getTableView(side);
    struct Reading {
        std::shared_ptr<FolderWatch> watch;
        Listing listing;
    };
    const auto read =
        waiting.forAnswer(path, [path, options = _options, &kinds = kinds](auto &progress) {
            auto watch = std::make_shared<FolderWatch>();
            // Keeps the kinds for later.
            return Reading { watch, Listing::read(path, options, kinds, &progress, watch.get()) };
        });
    if (!read)
        return; // given up: the pane stays where it was
    Listing listing = read->listing;
    if (const auto column = table.highlightedColumn()) {
        listing = sorted(listing, *column, _sortingDirection);
        table.setSortIndicator(*column, _sortingDirection);
    }
    const Listing before = rows(side);
    const bool reload = !change.item && path == before.folder();
    const ShownRows shown = table.shownRows();
    setRows(side, listing);
    Q_EMIT folderRead(side, read->watch);

    // Kept: a plain reload names no item, so it forgets the remembered row as a folder reached anew
    // does.
    const QString item = change.item.value_or(QString());
    const bool cameAlong = !item.isEmpty()
        && FileQueries::isStringInSubstring(windowController->completeNavigatorPath(side), item);
    if (!cameAlong && item != u".."_s)
        _selectedItems[side].removeRow(path);
    if (reload) {
        // What is selected there stays selected: the next command acts on it.
        table.showRows(rowsNow(shown, before, rows(side)));
        return;
    }
    const int row = _rows[side].shownRow(_selectedItems[side].row(path));
    table.selectRow(row);
    table.scrollToRow(row);
}

void MainModel::showFolder(Side side, FolderChange change) const
{
    const QString wanted = change.path.isEmpty() ? PathText::homeFolder() : change.path;
    const auto nearest = queries.nearestFolder(wanted);
    if (!nearest)
        return;
    if (*nearest != wanted) {
        change = { .path = *nearest };
        windowController->showNotice(filled(localized("'%@' is not there, '%@' is shown instead."),
                                            FileName::shown(wanted), FileName::shown(*nearest)));
    }
    bus.post(DirectoryChanged[side], change);
}

void MainModel::getRows(Side side, const RowsOfPane &opened)
{
    const Listing &listing = this->rows(side);
    const RowSet rows = currentRows(opened.rows, opened.seen, listing);
    if (rows.isEmpty())
        return;
    const int first = rows.first();
    const QString path = listing[first].path();
    const auto item = isItemRow(first) ? queries.lookAtOpened(path) : FileQueries::Opened();
    if (!item)
        return; // given up
    if (item->isDirectory)
        _selectedItems[side].setRow(_rows[side].wholeRow(first), PathText::parent(path));
    if (rows.size() >= 2) {
        QStringList paths;
        for (const int row : rows)
            paths.append(listing[row].path());
        launching.launchFileURLs(paths);
        return;
    }
    const QString name = PathText::lastComponent(queries.getLocalizedPath(path));
    const QString extension = PathText::extension(path);
    if (first == ParentRow) {
        showFolder(side, { .path = PathText::parent(path), .item = u".."_s });
        if (const PaneTable *active = windowController->getFirstResponderTableView())
            bus.post(TableViewSelectionDidChange, { active->side() });
    } else if (item->isApplication && !_insideBundle) {
        launching.launchApp(path);
    } else if ((extension == u"pkg"_s || extension == u"mpkg"_s) && !_insideBundle) {
        launching.launchInstallerPackage(path);
    } else if (item->leadsToFolder) {
        showFolder(side, { .path = item->resolved, .item = name });
    } else if (item->isPackage) {
        // A package that nothing launches ("x.framework"), or any inside another.
        if (!windowController->isItemInNavigatorPath(u"app"_s, side)
            && !windowController->isItemInNavigatorPath(u"pkg"_s, side))
            setInsideBundle(false);
        showFolder(side, { .path = path, .item = name });
    } else {
        launching.launchFileURLs({ path });
    }
}

void MainModel::getRowCount(Side side, const NoPayload &)
{
    bus.post(SelectRow[side], { int(rows(side).size()) });
}

void MainModel::gotoNextDirectory(Side side, const RowsOfPane &selected)
{
    const QStringList components =
        PathText::components(windowController->completeNavigatorPath(side));
    const int next = windowController->getSelectedSegmentFromSegmentedControl(side) + 1;
    if (next >= components.size())
        return;
    const auto inBundle = [](const QString &component) {
        const QString extension = PathText::extension(component);
        return extension == u"app"_s || extension == u"pkg"_s;
    };
    setInsideBundle(std::any_of(components.begin(), components.end(), inBundle));
    const RowSet rows = currentRows(selected.rows, selected.seen, this->rows(side));
    if (!rows.isEmpty() && isItemRow(rows.first())) {
        const QString path = this->rows(side)[rows.first()].path();
        if (queries.isDirectory(path))
            _selectedItems[side].setRow(_rows[side].wholeRow(rows.first()), PathText::parent(path));
    }
    showFolder(side,
               { .path = PathText::fromComponents(components.mid(0, next + 1)), .item = u".."_s });
}
