#pragma once

#include "settings/BookmarkStore.h"
#include "widgets/RecordTableModel.h"

#include <QObject>
#include <QPointer>

class FileQueries;
class OpenPanel;
class PathIcons;
class RecordTable;

// The list of the favourite applications in the preferences: each change is stored at once. Main
// thread.
class FavoriteApplicationsController final : public QObject {
    Q_OBJECT

public:
    FavoriteApplicationsController(BookmarkStore &store, const FileQueries &queries,
                                   PathIcons &icons, OpenPanel &openPanel);

    QList<FavoriteApplication> getFavoriteApplicationsFromUserDefaults() const;
    void addEntry(); // chosen in a panel
    void addFavoriteApplicationsEntry(const QString &path);
    void deleteEntry(); // the selected one
    void moveEntry(int row, int before);

    RecordTableModel &model() { return _model; }
    // The outlet, as long as the preferences are open; fills the table.
    void setTable(RecordTable *table);

private:
    void reload();

    BookmarkStore &store;
    const FileQueries &queries;
    PathIcons &icons;
    OpenPanel &openPanel;
    RecordTableModel _model;
    QPointer<RecordTable> table;
};
