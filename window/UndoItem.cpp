#include "window/UndoItem.h"

#include "base/Localized.h"
#include "commands/Commands.h"
#include "operations/Twinleaf.h"
#include "widgets/MenuText.h"

#include <QAction>
#include <QWidget>

namespace {

constexpr int LongestText = 60; // letters

} // namespace

void offerUndo(Commands &commands, Twinleaf &twinleaf, const QWidget &window)
{
    commands.setRunner(Command::Undo, [&twinleaf] { twinleaf.undoLast(); });
    commands.setCondition(Command::Undo, [&twinleaf] { return !twinleaf.undoHistory().isEmpty(); });
    twinleaf.undoHistory().setChangeHandler([&commands, &twinleaf, &window] {
        const QFontMetrics letters = window.fontMetrics();
        const QString text = letters.elidedText(twinleaf.undoHistory().text(), Qt::ElideMiddle,
                                                LongestText * letters.averageCharWidth());
        commands.action(Command::Undo)
            ->setText(text.isEmpty() ? localized(entryOf(Command::Undo).text) : menuText(text));
    });
}
