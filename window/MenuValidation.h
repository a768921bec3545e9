#pragma once

#include <optional>

// The command items of the menus.
enum class CommandItem {
    Open,
    Copy,
    Move,
    NewFolder,
    Delete,
    Rename,
    Duplicate,
    Reload,
    ShowClassicButtons
};

// Whether a selected row is one that commands may act on: not none and not "..".
bool isRow(std::optional<int> selectedRow);

// Whether the item is enabled; without an active pane there is no selected row.
bool validateMenuItem(CommandItem item, std::optional<int> selectedRow);
