#pragma once

#include "model/Listing.h"
#include "model/MessageBus.h"
#include "model/RowSet.h"

#include <optional>

class Authentication;

// The catalogue of the program's messages: name, payload, who posts, who receives.

// Requests to the pane model

// The folder of a pane changed: list it. Posted by the pane model, the navigators, the commands and
// the operations. Received by MainModel::fillFileList, then PathNavigators::setPathNavigator.
struct FolderChange {
    QString path; // empty: the home folder
    std::optional<QString>
        item {}; // the name that was opened, ".." going up; absent: a plain reload
};
inline constexpr SidedMessage<FolderChange> DirectoryChanged {
    { "TWLeftDirectoryChangedNotification" },
    { "TWRightDirectoryChangedNotification" },
};

// Rows of one pane, and the listing its sender saw, by which the receiver finds them again.
struct RowsOfPane {
    RowSet rows;
    Listing seen;
};

// Open these rows; row 0 goes up. Posted by the pane views and PaneCommands::openClicked.
// Received by MainModel::getRows.
inline constexpr SidedMessage<RowsOfPane> GetRows {
    { "TWGetRowsLeftNotification" },
    { "TWGetRowsRightNotification" },
};

// How many rows has the pane? Posted by the pane views (End key). Received by
// MainModel::getRowCount, which answers with SelectRow.
inline constexpr SidedMessage<NoPayload> GetRowCount {
    { "TWGetLeftRowCountNotification" },
    { "TWGetRightRowCountNotification" },
};

// One level deeper along the path in the navigator. Posted by the pane views (Right arrow).
// Received by MainModel::gotoNextDirectory.
inline constexpr SidedMessage<RowsOfPane> GotoNextDirectory {
    { "TWGotoNextDirectoryLeftNotification" },
    { "TWGotoNextDirectoryRightNotification" },
};

// A command on selected rows. A command on one row (information, rename) carries that one, or -1
// for none. Posted by the pane views with their own side and by the commands with the active
// pane's.
struct ItemRequest {
    std::optional<Side> side;
    RowSet item;
    Listing seen {};
};
// Received by MainModel::showItemInfo, copyItem, moveItem, deleteItem and renameItem.
inline constexpr Message<ItemRequest> ShowInfo { "TWShowInfoNotification" };
inline constexpr Message<ItemRequest> CopyItem { "TWCopyItemNotification" };
inline constexpr Message<ItemRequest> MoveItem { "TWMoveItemNotification" };

// Make a folder in a pane; without a side when no pane is active. Received by MainModel::newFolder.
struct NewFolderRequest {
    std::optional<Side> side;
};
inline constexpr Message<NewFolderRequest> NewFolder { "TWNewFolderNotification" };

inline constexpr Message<ItemRequest> DeleteItem { "TWDeleteItemNotification" };
inline constexpr Message<ItemRequest> RenameItem { "TWRenameItemNotification" };

// Open rows with an application. Posted by the open-with commands. Received by
// MainModel::openFileWithApplication.
struct OpenWithRequest {
    QString appPath;
    RowSet items;
    std::optional<Side> side;
    Listing seen {};
};
inline constexpr Message<OpenWithRequest> OpenFileWithApplication {
    "TWOpenFileWithApplicationNotification"
};

// Replies and view messages

// Select the row before this number: the answer to GetRowCount. Received by
// PaneTableView::selectRowBefore.
struct RowCount {
    int count = 0;
};
inline constexpr SidedMessage<RowCount> SelectRow {
    { "TWSelectLeftRowNotification" },
    { "TWSelectRightRowNotification" },
};

// A letter or digit was typed in a pane: the characters of the key event. Posted by the pane views.
// Received by SelectionCommands::letterPressed.
struct TypedLetter {
    QString characters;
};
inline constexpr Message<TypedLetter> LetterPressed { "TWLetterPressedNotification" };

// Compute the size of the first of these rows. Posted by the pane views (Space). Received by
// FolderSize::showFolderSize.
inline constexpr SidedMessage<RowsOfPane> ShowFolderSize {
    { "TWShowFolderSizeLeftNotification" },
    { "TWShowFolderSizeRightNotification" },
};

// Other windows and workers

// Open the metadata search, with a text to search for when there is one.
struct SearchFor {
    std::optional<QString> text {};
};
inline constexpr Message<SearchFor> SpotlightSearch { "TWSpotlightSearchNotification" };

// A result of the metadata search was chosen. Received by
// SelectionCommands::spotlightSearchResultClicked.
struct ChosenResult {
    QString path;
};
inline constexpr Message<ChosenResult> SpotlightSearchResultClicked {
    "TWSpotlightSearchResultClickedNotification"
};

// Stop the copy or move run between two items. Posted by the working sheet's Cancel. Received by
// FileOperations::cancelThread.
inline constexpr Message<NoPayload> CancelThread { "TWCancelThreadNotification" };

// Kept: the name is spelt like this. Stop unpacking. Posted by the archive sheet's Cancel.
// Received by FileOperations::cancelArchiving.
inline constexpr Message<NoPayload> CancelArchiving { "TWCancelArchvingNotification" };

// The administrator's rights were gained, or given up. Posted by Authentication.
struct RightsChange {
    const Authentication *authentication;
};
inline constexpr Message<RightsChange> Authenticated { "AUAuthenticatedNotification" };
inline constexpr Message<RightsChange> Deauthenticated { "AUDeauthenticatedNotification" };

// Messages about the platform

// What depends on a pane's selection is to be shown anew. Posted by the pane model after re-sorting
// and after "..", although the user selected nothing. Received by the pane's data source.
struct PaneOfMessage {
    Side side;
};
inline constexpr Message<PaneOfMessage> TableViewSelectionDidChange {
    "NSTableViewSelectionDidChangeNotification"
};

// The program is about to quit, or the machine to power off: save. Received by the pane data
// sources and the window controller.
inline constexpr Message<NoPayload> ApplicationWillTerminate {
    "NSApplicationWillTerminateNotification"
};
