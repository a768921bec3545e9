#pragma once

#include "model/RowSet.h"
#include "model/Side.h"

#include <QStringList>

class MainModel;
class MainWindowLayout;
class QuickFilter;
class Waiting;

// Leads a pane to items by their names, for whoever does not ask from its rows: the search, other
// programs. Main thread.
class ItemsInPane final {
public:
    ItemsInPane(MainWindowLayout &mainWindow, MainModel &mainModel, QuickFilter &quickFilter,
                Waiting &waiting);

    // Shows the folder, and selects those of the names that are among its rows; a filter that
    // leaves one out goes. The names that are not there; none where the pane went elsewhere, or
    // stayed: then the person was told.
    QStringList show(Side side, const QString &folder, const QStringList &names) const;

private:
    struct Found {
        RowSet rows; // ascending
        QStringList missing;
    };
    Found find(Side side, const QStringList &names) const;

    MainWindowLayout &mainWindow;
    MainModel &mainModel;
    QuickFilter &quickFilter;
    Waiting &waiting;
};
