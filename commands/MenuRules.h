#pragma once

#include "model/Listing.h"

#include <QString>

#include <optional>

class FileQueries;

// What the menus look at: the row of the active pane and the item that stands there.
struct MenuState {
    std::optional<int> selectedRow {}; // none without an active pane
    QString path {};
    const FileQueries &queries;
    std::optional<Column> sortedBy {};
    bool hasBack = false; // a folder to go back to
    bool hasForward = false;
};

// The rules by which menus enable their commands.
using MenuRule = bool (*)(const MenuState &);
bool always(const MenuState &);
bool onItem(const MenuState &state);
bool onFile(const MenuState &state);
bool onPackage(const MenuState &state);
bool onArchive(const MenuState &state);
bool onVolume(const MenuState &state);
bool onFolderOrNothing(const MenuState &state); // with nothing selected the parent folder is meant
bool canGoBack(const MenuState &state);
bool canGoForward(const MenuState &state);

// By which column the active pane is sorted.
template <Column By>
bool isSortedBy(const MenuState &state)
{
    return state.sortedBy == By;
}
