#pragma once

#include <QString>

#include <optional>

class FileQueries;

// The command items of the menus.
enum class CommandItem {
    Open,
    OpenWith,
    PackageContent,
    Copy,
    Move,
    NewFolder,
    Delete,
    Rename,
    Duplicate,
    CreateArchive,
    Unpack,
    Eject,
    Reload,
    ShowClassicButtons
};

// What the menus look at: the row of the active pane and the item that stands there.
struct MenuState {
    std::optional<int> selectedRow {}; // none without an active pane
    QString path {};
};

// Whether a selected row is one that commands may act on: not none and not "..".
bool isRow(std::optional<int> selectedRow);

// Whether the item is enabled.
bool validateMenuItem(CommandItem item, const MenuState &state, const FileQueries &queries);
