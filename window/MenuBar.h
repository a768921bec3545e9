#pragma once

#include "model/Side.h"
#include "window/MenuValidation.h"

#include <QObject>

#include <functional>
#include <utility>

class ClassicKeys;
class PaneCommands;
class PaneWindow;
class QAction;
class QMenu;
class QMenuBar;

// The menus of the main window: the commands with their keys, enabled while they apply.
class MenuBar final : public QObject {
    Q_OBJECT

public:
    MenuBar(QMenuBar &menus, PaneCommands &commands, PaneWindow &window, const ClassicKeys &keys);

    QAction *menuItemShowHiddenFiles() const { return _showHiddenFiles; }
    QAction *menuItemShowClassicButtons() const { return _showClassicButtons; }

Q_SIGNALS:
    void showHiddenFilesClicked();
    void showClassicButtonsClicked();
    void pathAsked(); // the keyboard to the path of the active pane
    void useOpositePathAsked();
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
    void validated(QAction *item, CommandItem command);
    QMenu &addMenu(const QString &title);
    void addFileMenu(PaneCommands &commands, const ClassicKeys &keys);
    void addViewMenu(PaneCommands &commands);
    void addGoMenu();
    void validate() const;
    void enableAll() const;

    QMenuBar &menus;
    PaneWindow &window;
    QList<std::pair<QAction *, CommandItem>> _validated;
    QAction *_showHiddenFiles = nullptr;
    QAction *_showClassicButtons = nullptr;
};
