#include "sheets/preferences/FavoriteApplicationsController.h"

#include "base/Localized.h"
#include "model/FileQueries.h"
#include "platform/OpenPanel.h"
#include "widgets/PathIcons.h"
#include "widgets/RecordTable.h"

FavoriteApplicationsController::FavoriteApplicationsController(BookmarkStore &favorites,
                                                               const FileQueries &fileQueries,
                                                               PathIcons &applicationIcons,
                                                               OpenPanel &panel)
    : store(favorites)
    , queries(fileQueries)
    , icons(applicationIcons)
    , openPanel(panel)
    , _model({ localized("Icon"), localized("Application"), localized("Path"),
               localized("Real path") },
             applicationIcons)
{
}

QList<FavoriteApplication>
FavoriteApplicationsController::getFavoriteApplicationsFromUserDefaults() const
{
    return store.getFavoriteApplicationsFromUserDefaults();
}

void FavoriteApplicationsController::setTable(RecordTable *recordTable)
{
    table = recordTable;
    connect(table, &RecordTable::deleteAsked, this, &FavoriteApplicationsController::deleteEntry);
    connect(table, &RecordTable::moveAsked, this, &FavoriteApplicationsController::moveEntry);
    icons.forget();
    reload();
}

void FavoriteApplicationsController::reload()
{
    QList<RecordTableModel::Record> records;
    const auto favorites = getFavoriteApplicationsFromUserDefaults();
    for (const FavoriteApplication &favorite : favorites)
        records.append(
            { favorite.realPath, { favorite.name, favorite.localizedPath, favorite.realPath } });
    _model.setRecords(records);
}

void FavoriteApplicationsController::addEntry()
{
    if (const auto chosen = openPanel.chooseApplication())
        addFavoriteApplicationsEntry(*chosen);
}

void FavoriteApplicationsController::addFavoriteApplicationsEntry(const QString &path)
{
    store.addFavoriteApplicationsEntry(path, queries.getLocalizedPath(path));
    reload();
}

void FavoriteApplicationsController::deleteEntry()
{
    const int row = table ? table->selectedRow() : -1;
    if (row < 0)
        return;
    store.deleteFavoriteApplicationsEntry(_model.records()[row].path);
    reload();
    table->selectRow(row); // the next one
}

void FavoriteApplicationsController::moveEntry(int row, int before)
{
    const QList<RecordTableModel::Record> &records = _model.records();
    store.moveFavoriteApplicationsEntry(
        records[row].path,
        before < records.size() ? std::optional(records[before].path) : std::nullopt);
    reload();
    table->selectRow(before > row ? before - 1 : before);
}
