#include "window/ItemsInPane.h"

#include "base/Localized.h"
#include "files/Waiting.h"
#include "model/MainModel.h"
#include "views/TableViews.h"
#include "window/MainWindowLayout.h"
#include "window/QuickFilter.h"

#include <QSet>

ItemsInPane::ItemsInPane(MainWindowLayout &layout, MainModel &model, QuickFilter &filter,
                         Waiting &asker)
    : mainWindow(layout)
    , mainModel(model)
    , quickFilter(filter)
    , waiting(asker)
{
}

QStringList ItemsInPane::show(Side side, const QString &folder, const QStringList &names) const
{
    mainModel.showFolder(side, { .path = folder });
    if (mainModel.rows(side).folder() != folder)
        return {};
    Found found = find(side, names);
    if (!found.missing.isEmpty() && mainModel.isFiltered(side)) {
        quickFilter.end(side);
        found = find(side, names);
    }
    if (found.rows.isEmpty())
        return found.missing;
    PaneTableView &list = mainWindow.fileList(side);
    list.selectRow(found.rows.first()); // what was marked before is not meant
    if (found.rows.size() > 1)
        list.selectRows(found.rows);
    list.scrollToRow(found.rows.last());
    list.scrollToRow(found.rows.first()); // where not all find room
    return found.missing;
}

ItemsInPane::Found ItemsInPane::find(Side side, const QStringList &names) const
{
    const Listing listing = mainModel.rows(side);
    return waiting.forRows(names.size() < 2 ? 0 : listing.size(), localized("Comparing..."), [=] {
        Found found;
        if (names.size() < 2) {
            for (const QString &name : names) {
                if (const int row = int(listing.rowOfName(name)); isItemRow(row))
                    found.rows.append(row);
                else
                    found.missing.append(name);
            }
            return found;
        }
        QSet<QString> wanted(names.begin(), names.end());
        for (int row = FirstItemRow; row < listing.size() && !wanted.isEmpty(); ++row)
            if (wanted.remove(listing[row].name()))
                found.rows.append(row);
        for (const QString &name : names)
            if (wanted.contains(name))
                found.missing.append(name);
        return found;
    });
}
