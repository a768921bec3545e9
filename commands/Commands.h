#pragma once

#include "commands/Command.h"
#include "commands/CommandTable.h"

#include <QActionGroup>
#include <QIcon>
#include <QMap>
#include <QObject>

#include <functional>

class FileQueries;
class Launching;
class PaneWindow;
class QAction;

// The commands at work: one item for each, which every menu shows, and what happens when it is
// chosen. A command that has nothing behind it is not to be seen. Main thread.
class Commands final : public QObject {
    Q_OBJECT

public:
    struct Subjects {
        PaneCommands &panes;
        ClipboardCommands &clipboard;
        SelectionCommands &selection;
        FolderCommands &folders;
        NavigationCommands &navigation;
        Launching &launching;
    };
    Commands(const Subjects &subjects, PaneWindow &window, const FileQueries &queries,
             const ClassicKeys &keys);

    // What answers a command that the table leaves to the application.
    void setRunner(Command command, std::function<void()> runner);
    // What must hold besides the menu's rule, now.
    void setCondition(Command command, std::function<bool()> condition);
    // The application of a tool is there: its command is offered with this icon.
    void offerTool(Command command, const QIcon &icon);

    // A sided command acts on the pane whose menu it was chosen from, else on the active one.
    void run(Command command, std::optional<Side> menu = {});

    // The item; it belongs to this object.
    QAction *action(Command command, Side menu = Side::Left) const
    {
        return _actions[command][menu];
    }
    // The one that stands in a menu of no pane, and acts on the active one.
    QAction *actionOfActivePane(Command command) const
    {
        return _actionsOfActivePane.value(command, action(command));
    }

    // What the menus' rules go by, now.
    MenuState state() const;
    // Enables what the menus' rules allow now; and everything, once no menu is open.
    void validate() const;
    void enableAll() const;

private:
    void runNow(Command command, std::optional<Side> menu);
    QAction *newAction(const CommandEntry &entry, const ClassicKeys &keys,
                       std::optional<Side> menu);

    QList<QAction *> actionsOf(Command command) const; // in all menus

    const Subjects _subjects;
    PaneWindow &window;
    const FileQueries &queries;
    QMap<Command, PerSide<QAction *>> _actions; // the same on both sides where there is but one
    QMap<Command, QAction *> _actionsOfActivePane; // of the sided ones with a key
    QActionGroup _choice { this }; // one of them is chosen
    QMap<Command, std::function<void()>> _runners;
    QMap<Command, std::function<bool()>> _conditions;
};
