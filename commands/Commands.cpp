#include "commands/Commands.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/ClipboardCommands.h"
#include "commands/FolderCommands.h"
#include "commands/NavigationCommands.h"
#include "commands/PaneCommands.h"
#include "commands/SelectionCommands.h"
#include "model/Launching.h"
#include "model/PaneWindow.h"
#include "widgets/Icons.h"

#include <QAction>

Commands::Commands(const Subjects &subjects, PaneWindow &paneWindow, const FileQueries &fileQueries,
                   const ClassicKeys &keys)
    : _subjects(subjects)
    , window(paneWindow)
    , queries(fileQueries)
{
    for (const CommandEntry &entry : commandTable()) {
        if (entry.isSided()) {
            for (const Side side : { Side::Left, Side::Right })
                _actions[entry.id][side] = newAction(entry, keys, side);
            // One key for two panes would be nobody's.
            if (entry.shortcut)
                _actionsOfActivePane[entry.id] = newAction(entry, keys, std::nullopt);
        } else {
            QAction *action = newAction(entry, keys, std::nullopt);
            _actions[entry.id] = { action, action };
        }
    }
}

QAction *Commands::newAction(const CommandEntry &entry, const ClassicKeys &keys,
                             std::optional<Side> menu)
{
    auto *action = new QAction(localized(entry.text), this);
    if (const QString key = shownKey(entry, keys); !key.isEmpty())
        action->setText(action->text() + u'\t' + key);
    if (entry.icon)
        action->setIcon(themedIcon(QString::fromLatin1(entry.icon)));
    if (entry.shortcut && !menu)
        action->setShortcut(QKeySequence(QString::fromLatin1(entry.shortcut)));
    if (entry.chosenRule) {
        action->setCheckable(true);
        _choice.addAction(action);
    }
    action->setVisible(!std::holds_alternative<ByApplication>(entry.run)
                       && !std::holds_alternative<Tool>(entry.run));
    connect(action, &QAction::triggered, this, [this, id = entry.id, menu] { run(id, menu); });
    return action;
}

void Commands::setRunner(Command command, std::function<void()> runner)
{
    _runners[command] = std::move(runner);
    action(command)->setVisible(true);
}

void Commands::setCondition(Command command, std::function<bool()> condition)
{
    _conditions[command] = std::move(condition);
}

void Commands::offerTool(Command command, const QIcon &icon)
{
    action(command)->setIcon(icon);
    action(command)->setVisible(true);
}

void Commands::run(Command command, std::optional<Side> menu)
{
    Arrivals::afterWait(this, [this, command, menu] { runNow(command, menu); });
}

void Commands::runNow(Command command, std::optional<Side> menu)
{
    const CommandEntry::Run &run = entryOf(command).run;
    if (const auto *panes = std::get_if<CommandEntry::OfPanes>(&run)) {
        (_subjects.panes.**panes)();
    } else if (const auto *clipboard = std::get_if<CommandEntry::OfClipboard>(&run)) {
        (_subjects.clipboard.**clipboard)();
    } else if (const auto *selection = std::get_if<CommandEntry::OfSelection>(&run)) {
        (_subjects.selection.**selection)();
    } else if (const auto *navigation = std::get_if<CommandEntry::OfNavigation>(&run)) {
        (_subjects.navigation.**navigation)();
    } else if (const auto *folder = std::get_if<CommandEntry::OfFolder>(&run)) {
        const PaneTable *active = window.getFirstResponderTableView();
        if (menu || active)
            (_subjects.folders.**folder)(menu ? *menu : active->side());
    } else if (const auto *tool = std::get_if<Tool>(&run)) {
        _subjects.launching.launchTool(*tool);
    } else if (const auto &runner = _runners[command]) {
        runner();
    }
}

MenuState Commands::state() const
{
    MenuState state { .queries = queries };
    if (const PaneTable *list = window.getFirstResponderTableView()) {
        state.selectedRow = list->selectedRow();
        state.path = _subjects.panes.selectedPath();
        state.sortedBy = list->highlightedColumn();
        state.hasBack = _subjects.navigation.canGo(list->side(), FolderHistory::Way::Back);
        state.hasForward = _subjects.navigation.canGo(list->side(), FolderHistory::Way::Forward);
    }
    return state;
}

QList<QAction *> Commands::actionsOf(Command command) const
{
    return { action(command, Side::Left), action(command, Side::Right),
             actionOfActivePane(command) };
}

void Commands::validate() const
{
    const MenuState state = this->state();
    for (const CommandEntry &entry : commandTable()) {
        const auto condition = _conditions.value(entry.id);
        const bool enabled = entry.menuRule(state) && (!condition || condition());
        for (QAction *action : actionsOf(entry.id))
            action->setEnabled(enabled);
        if (entry.chosenRule)
            action(entry.id)->setChecked(entry.chosenRule(state));
    }
}

void Commands::enableAll() const
{
    for (const CommandEntry &entry : commandTable())
        for (QAction *action : actionsOf(entry.id))
            action->setEnabled(true);
}
