#pragma once

#include "commands/Command.h"
#include "commands/MenuRules.h"
#include "model/Side.h"
#include "views/ClassicKeys.h"

#include <QString>

#include <span>
#include <variant>

class ClipboardCommands;
class FolderCommands;
class NavigationCommands;
class PaneCommands;
class SelectionCommands;
enum class Tool;

// Answered by an object above this room; Wiring.cpp says which.
struct ByApplication { };

// One command of the program. Menus, context menus, buttons and keys are made from its entry.
struct CommandEntry {
    using OfPanes = void (PaneCommands::*)();
    using OfClipboard = void (ClipboardCommands::*)();
    using OfSelection = void (SelectionCommands::*)();
    using OfNavigation = void (NavigationCommands::*)();
    using OfFolder = void (FolderCommands::*)(Side);
    using Run = std::variant<ByApplication, OfPanes, OfClipboard, OfSelection, OfNavigation,
                             OfFolder, Tool>;

    Command id;
    const char *text; // English, as is every text here; shown localized
    const char *icon = nullptr; // its freedesktop name
    const char *shortcut = nullptr; // the menu's own key; of a sided one on the active pane
    std::optional<ClassicAction> classic {}; // whose key, a setting, the panes answer to
    const char *paneKey = nullptr; // a fixed key that the panes answer to
    // When menus enable it. A guard that the command has of its own stays with its function.
    MenuRule menuRule = &always;
    // Of a command that is one of a choice: when menus show it as chosen.
    MenuRule chosenRule = nullptr;
    Run run {};

    // It stands once for each pane, in the menu of that pane's navigator.
    bool isSided() const { return std::holds_alternative<OfFolder>(run); }
};

std::span<const CommandEntry> commandTable(); // in the order of the enum
const CommandEntry &entryOf(Command command);

// The key that stands beside a command which the panes answer themselves; empty for none.
QString shownKey(const CommandEntry &entry, const ClassicKeys &keys);
