#include "commands/Commands.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/FolderCommands.h"
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
    if (entry.shortcut)
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
    } else if (const auto *selection = std::get_if<CommandEntry::OfSelection>(&run)) {
        (_subjects.selection.**selection)();
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
    }
    return state;
}

void Commands::validate() const
{
    const MenuState state = this->state();
    for (const CommandEntry &entry : commandTable()) {
        const bool enabled = entry.menuRule(state);
        for (const Side side : { Side::Left, Side::Right })
            action(entry.id, side)->setEnabled(enabled);
        if (entry.chosenRule)
            action(entry.id)->setChecked(entry.chosenRule(state));
    }
}

void Commands::enableAll() const
{
    for (const PerSide<QAction *> &actions : _actions)
        for (const Side side : { Side::Left, Side::Right })
            actions[side]->setEnabled(true);
}
