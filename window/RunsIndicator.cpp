#include "window/RunsIndicator.h"

#include "base/Localized.h"
#include "sheets/WorkingSheet.h"
#include "widgets/MenuText.h"
#include "widgets/MenuTextButton.h"
#include "widgets/Mnemonics.h"
#include "window/MainWindowLayout.h"

#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds Blink { 500 };
constexpr int Letters = 92; // as bytes, speed, time left and what waits may need
constexpr int LargestShare = 2; // of the window's width: one half

QString cancelText(const ShownRun &run)
{
    return filled(localized("Cancel '%@'"), menuText(run.text));
}

} // namespace

RunsIndicator::RunsIndicator(MainWindowLayout &mainWindow, WorkingSheet &workingSheet)
    : QObject(&mainWindow)
    , window(mainWindow)
    , sheet(workingSheet)
    , _menu(window.menuBar()->addMenu(localized("&Running")))
{
    _menu->menuAction()->setVisible(false);
    window.runsButton->setMenu(_menu);
    sheet.setWaitingMenu(_menu);
    // Made when it opens and never under the pointer: a line must not move away from below it.
    connect(_menu, &QMenu::aboutToShow, this, &RunsIndicator::fillMenu);
    markWhenShown(*_menu);
    markTitles(*window.menuBar(), *_menu);
    _notAtOnce.setSingleShot(true);
    _notAtOnce.setInterval(Blink);
    _notAtOnce.callOnTimeout(this, &RunsIndicator::update);
}

void RunsIndicator::showRuns(const QList<ShownRun> &runs)
{
    const auto running = [](const QList<ShownRun> &list) { return list.value(0).ticket; };
    if (running(runs) != running(_runs))
        _detail.clear();
    _runs = runs;
    for (QAction *action : _menu->actions()) {
        const auto isLine = [&](const ShownRun &run) { return run.ticket == action->data(); };
        if (action->data().isValid() && std::ranges::none_of(_runs, isLine))
            action->setEnabled(false); // it has ended under the open menu
    }
    // What waits is worth a word at once.
    if (_runs.isEmpty() || _runs.size() > 1 || window.runsButton->isVisible())
        update();
    else if (!_notAtOnce.isActive())
        _notAtOnce.start();
}

void RunsIndicator::showRunDetail(const QString &detail)
{
    if (_detail == detail)
        return;
    _detail = detail;
    if (!_notAtOnce.isActive())
        update();
}

void RunsIndicator::fillMenu()
{
    const auto old = _menu->actions();
    for (QAction *action : old) {
        _menu->removeAction(action);
        action->deleteLater(); // its own signal may be what led here
    }
    for (const ShownRun &run : std::as_const(_runs)) {
        QAction *action = _menu->addAction(cancelText(run));
        action->setData(run.ticket);
        connect(action, &QAction::triggered, this,
                [this, ticket = run.ticket] { Q_EMIT cancelAsked(ticket); });
        if (run == _runs.first() && _runs.size() > 1)
            _menu->addSeparator();
    }
    if (_runs.size() < 3)
        return;
    _menu->addSeparator();
    connect(_menu->addAction(localized("Cancel all that wait")), &QAction::triggered, this,
            &RunsIndicator::cancelWaitingAsked);
}

void RunsIndicator::update()
{
    _notAtOnce.stop();
    const int waiting = int(_runs.size()) - 1;
    sheet.setWaitingCount(waiting);
    const bool runs = !_runs.isEmpty();
    MenuTextButton &button = *window.runsButton;
    QWidget &room = *window.runsRoom;
    // The menu bar makes room for its corner when its menus change: so the room is as large as the
    // texts of a run may need, and stays until the last one has ended.
    if (room.isVisible() != runs) {
        room.setFixedWidth(std::min(Letters * button.fontMetrics().averageCharWidth(),
                                    window.width() / LargestShare));
        room.setVisible(runs);
        _menu->menuAction()->setVisible(runs);
    }
    if (!runs)
        return;
    const QString tail =
        waiting > 0 ? u"  \u00b7  "_s + filled(localized("%i waiting"), waiting) : QString();
    button.setPlainText(tail); // what is left beside it is the text's
    const QString text = _detail.isEmpty() ? _runs.first().text : _detail;
    button.setPlainText(button.fontMetrics().elidedText(text, Qt::ElideMiddle,
                                                        room.width() - button.sizeHint().width())
                        + tail);
    QStringList whole;
    for (const ShownRun &run : std::as_const(_runs))
        whole.append(run.text);
    if (!_detail.isEmpty())
        whole.insert(1, _detail);
    button.setToolTip(plainToolTip(whole.join(u'\n')));
    button.setAccessibleDescription(whole.join(u'\n'));
}
