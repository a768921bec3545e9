#pragma once

#include "commands/MenuValidation.h"
#include "model/Side.h"

#include <QObject>

#include <functional>
#include <utility>

class ClassicKeys;
class FolderCommands;
class PaneCommands;
class PaneWindow;
class SelectionCommands;
class QAction;
class QMenu;
class QMenuBar;
enum class Tool;

// The menus of the main window: the commands with their keys, enabled while they apply. Each
// command stands there once; the panes' and navigators' context menus show the same items.
class MenuBar final : public QObject {
    Q_OBJECT

public:
    MenuBar(QMenuBar &menus, PaneCommands &commands, FolderCommands &folders,
            SelectionCommands &selection, PaneWindow &window, const FileQueries &queries,
            const ClassicKeys &keys);

    QAction *menuItemShowHiddenFiles() const { return _showHiddenFiles; }
    QAction *menuItemShowClassicButtons() const { return _showClassicButtons; }
    QMenu &popUpMenu() const { return *_popUpMenu; } // of a row
    QMenu &pathMenu(Side side) const { return *_pathMenus[side]; } // of a navigator
    QMenu &bookmarksMenu() const { return *_bookmarksMenu; }
    QMenu &menuOpenWithFavorite() const { return *_openWithMenu; }

    // Items that are there only where there is something behind them.
    void addTool(const QString &text, const QIcon &icon, const std::function<void()> &launch);
    void addHelp(const QString &text, const std::function<void()> &command);

Q_SIGNALS:
    void showHiddenFilesClicked();
    void showClassicButtonsClicked();
    void pathAsked(); // the keyboard to the path of the active pane
    void terminateAsked();

private:
    // What an item shows beside its text: a key that the panes or this menu answer to.
    struct Look {
        QString icon {};
        QString key {};
        bool isShortcut = false; // the menu's own; the panes see to the others
    };
    QAction *add(QMenu &menu, const QString &text, const Look &look,
                 const std::function<void()> &command);
    QAction *addValidated(QMenu &menu, CommandItem item, const QString &text, const Look &look,
                          void (PaneCommands::*command)());
    QMenu &addMenu(const QString &title);
    void validateWhileOpen(QMenu &menu);
    void addFileMenu(const ClassicKeys &keys);
    void addSelectMenu(SelectionCommands &selection);
    void addViewMenu();
    void addGoMenu();
    void setUpPopUpMenu();
    void validate() const;
    void enableAll() const;

    QMenuBar &menus;
    PaneCommands &commands;
    FolderCommands &folders;
    PaneWindow &window;
    const FileQueries &queries;
    QList<std::pair<QAction *, CommandItem>> _validated;
    QAction *_showHiddenFiles = nullptr;
    QAction *_showClassicButtons = nullptr;
    QMenu *_popUpMenu = nullptr;
    PerSide<QMenu *> _pathMenus;
    QMenu *_openWithMenu = nullptr;
    QMenu *_bookmarksMenu = nullptr;
    QMenu *_toolsMenu = nullptr;
    QMenu *_helpMenu = nullptr;
};
