#pragma once

#include "model/FilteredListing.h"
#include "model/ListingOptions.h"
#include "model/Messages.h"
#include "model/OperationRecord.h"
#include "model/OperationRequest.h"
#include "model/RowChanges.h"
#include "model/SelectionMemory.h"

#include <QObject>

#include <memory>

class Alerts;
class FileKinds;
class FileQueries;
class FolderWatch;
class ItemInformation;
class Launching;
class OperationDesk;
class PaneWindow;
class UserDefaults;
class Waiting;

// The pane model: holds both listings and the remembered selections, opens rows, and turns the
// panes' messages into operation requests. Main thread.
class MainModel final : public QObject {
    Q_OBJECT

public:
    MainModel(MessageBus &bus, UserDefaults &defaults, Alerts &alerts, FileQueries &queries,
              Launching &launching, const FileKinds &kinds, Waiting &waiting);
    ~MainModel() override;

    // Outlets, set before awakeFromNib. The information sheet may be missing.
    void setWindowController(PaneWindow *window) { windowController = window; }
    void setTwinleaf(OperationDesk *desk) { twinleaf = desk; }
    void setInfoSheetController(ItemInformation *sheet) { infoSheetController = sheet; }

    // Start paths that take the place of the remembered ones for this run, with a name to select.
    struct StartFolder {
        QString path;
        QString selectedName {};
    };
    void setStartFolder(Side side, const StartFolder &start) { _startFolders[side] = start; }

    void awakeFromNib();
    void setUserDefaultValues();

    // The rows that a pane shows; a filter leaves out the others of its folder.
    const Listing &rows(Side side) const { return _rows[side].shown(); }
    const Listing &rowsLeft() const { return rows(Side::Left); }
    const Listing &rowsRight() const { return rows(Side::Right); }
    const Listing &wholeRows(Side side) const { return _rows[side].whole(); }
    // Stays until the pane goes to another folder; "" for none.
    void setFilter(Side side, const QString &text);
    bool isFiltered(Side side) const { return _rows[side].filter().isOn(); }

    // Sends a pane to a folder. One that is gone is replaced by the nearest that is there, with a
    // word about it; when nobody answers for it the pane stays where it is.
    void showFolder(Side side, FolderChange change) const;

    // The folder that a pane shows; "" before its first listing.
    QString folder(Side side) const { return wholeRows(side).folder(); }
    // Also by two names of it. Nothing when the question was given up.
    std::optional<bool> panesShowSameFolder() const;
    std::optional<bool> shows(Side side, const QString &otherFolder) const;
    // What is to be listed after a step in one pane: both when they show one folder, by its name.
    UpdateBoth updateForOnePane() const;

    bool showToolTips() const { return _options.showToolTips; }
    bool traverseLinks() const { return _options.traverseLinks; }
    bool showHiddenFiles() const { return _options.showHiddenFiles; }
    bool confirmationForFileOperations() const { return _options.confirmationForFileOperations; }
    bool useLongDateFormat() const { return _options.useLongDateFormat; }
    QString dateFormat() const; // the calendar format of the "Date" columns
    bool dateRightAlignment() const { return _options.dateRightAlignment; }
    bool insideBundle() const { return _insideBundle; }
    void setInsideBundle(bool inside) { _insideBundle = inside; }

    // Shows a pane's folder as it is now. Selection, keyboard and view stay on their items, and
    // nobody hears of another folder. `changes`: from the listing before; nothing when unknown.
    void updateRows(Side side, const Listing &now, const std::optional<RowChanges> &changes);

    // What a table showed of another listing, in this one; says that it compares where that takes
    // a while.
    ShownRows rowsNow(const ShownRows &shown, const Listing &seen, const Listing &now) const;
    void sortRowEntries(Column column, Side side, SortDirection direction);
    // Asks for another name after a rename or a new folder that failed, with the one typed.
    void askAgain(const OperationRequest &refused);

    SelectionMemory &selectedItems(Side side) { return _selectedItems[side]; }
    int getRowFromValueInFileList(Side side, const QString &path) const; // -1 when not there

Q_SIGNALS:
    void rowsAboutToChange(Side side);
    void rowsChanged(Side side);
    void fewRowsChanged(Side side); // in place of both: the table has followed each
    // A folder was read, and is shown; the watch tells what changes in it.
    void folderRead(Side side, const std::shared_ptr<FolderWatch> &watch);

private:
    // Handlers of the bus, in the order of the catalogue.
    void fillFileList(Side side, const FolderChange &change);
    void getRows(Side side, const RowsOfPane &opened);
    void getRowCount(Side side, const NoPayload &);
    void gotoNextDirectory(Side side, const RowsOfPane &selected);
    void showItemInfo(const ItemRequest &request);
    void copyItem(const ItemRequest &request);
    void moveItem(const ItemRequest &request);
    void newFolder(const NewFolderRequest &request);
    void deleteItem(const ItemRequest &request);
    void renameItem(const ItemRequest &request);
    void openFileWithApplication(const OpenWithRequest &request);

    void setRows(Side side, const Listing &whole);
    void show(Side side, const FilteredListing &rows);
    void requestCopyMove(const ItemRequest &request, Operation operation);
    Listing sorted(const Listing &listing, Column column, SortDirection direction) const;
    OperationRequest getDictionaryForCopyMove(std::optional<Side> side, const Listing &listing,
                                              const RowSet &rows) const;
    void askForNewFolder(const QString &parent, const QString &suggested, std::optional<Side> side);
    void askForNewName(const QString &path, const QString &suggested, std::optional<Side> side);

    MessageBus &bus;
    UserDefaults &defaults;
    Alerts &alerts;
    FileQueries &queries;
    Launching &launching;
    const FileKinds &kinds;
    Waiting &waiting;
    // The application's own, as the references above are.
    PaneWindow *windowController = nullptr;
    OperationDesk *twinleaf = nullptr;
    ItemInformation *infoSheetController = nullptr;

    PerSide<FilteredListing> _rows;
    PerSide<SelectionMemory> _selectedItems;
    PerSide<std::optional<StartFolder>> _startFolders;
    ListingOptions _options;
    // Kept: one direction for both panes. A reload of one pane sorts by the last direction used in
    // either.
    SortDirection _sortingDirection = SortDirection::Descending;
    bool _insideBundle = false;
};
