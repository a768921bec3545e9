#pragma once

#include "model/Side.h"

#include <optional>
#include <span>

class Commands;
enum class Command;
class QMenu;
class QMenuBar;
class QObject;

// The menus of the main window. Each command stands there once; the panes' and navigators' context
// menus show the same items.
class MenuBar final {
public:
    MenuBar(QMenuBar &menus, Commands &commands);

    QMenu &popUpMenu() const { return *_popUpMenu; } // of a row
    QMenu &folderMenu(Side side) const { return *_folderMenus[side]; } // of a pane, beside its rows
    QMenu &pathMenu(Side side) const { return *_pathMenus[side]; } // of a navigator
    QMenu &openWithMenu() const { return *_openWithMenu; }
    QMenu &bookmarksMenu() const { return *_bookmarksMenu; }

private:
    using Lines = std::span<const std::optional<Command>>;

    QMenu &newMenu(Lines lines, std::optional<Side> side = {}); // of a pane, or the active one
    QMenu &addMenu(const char *title, Lines lines);
    void validateWhileOpen(QMenu &menu) const;

    QMenuBar &menus;
    Commands &commands;
    QObject *const _escape; // what it does in the bar's menus
    QMenu *_popUpMenu = nullptr;
    PerSide<QMenu *> _folderMenus;
    PerSide<QMenu *> _pathMenus;
    QMenu *_openWithMenu = nullptr;
    QMenu *_bookmarksMenu = nullptr;
};
