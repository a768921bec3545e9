#include "operations/Undo.h"

#include "base/MainThread.h"
#include "files/FileName.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "operations/CopyMove.h"
#include "operations/SmallPrint.h"
#include "operations/Undoing.h"
#include "operations/Workers.h"
#include "platform/Alerts.h"

#include <QSet>

namespace {

// Where it works: asked at the end of the program whether anybody answers there.
QStringList placesOf(const DoneItems &done)
{
    QSet<QString> folders;
    for (const DoneItem &item : done.items())
        for (const QString &folder : { item.from.folder, item.to.folder })
            if (!folder.isEmpty())
                folders.insert(folder);
    return folders.values();
}

} // namespace

Undo::Undo(Alerts &alertsToAsk, Programs &programsToRun, Workspace &workspaceInUse,
           CopyMove &engine, Workers &threads)
    : alerts(alertsToAsk)
    , programs(programsToRun)
    , workspace(workspaceInUse)
    , copyMove(engine)
    , workers(threads)
{
}

void Undo::undoLast()
{
    if (workers.anyRunning())
        return windowController->showNotice(
            localized("Nothing can be undone while something is under way."));
    if (_history.isEmpty())
        return windowController->showNotice(localized("There is nothing to undo."));
    const QString text = _history.text();
    const DoneItems done = _history.takeLast();
    if (!isAgreedTo(done, text))
        return _history.add(done);
    workers.detach(Operation::Undo, placesOf(done),
                   [this, done, ticket = copyMove.queue().enqueue(text)](OperationRecord &record) {
                       run(done, ticket, record);
                   });
}

bool Undo::isAgreedTo(const DoneItems &done, const QString &text) const
{
    const auto &items = done.items();
    const int count = int(items.size());
    const DoneItem &first = items.first();
    const QString folder = first.way == DoneItem::Trashed ? first.from.folder : first.to.folder;
    const QString details = text + u'\n' + FileName::shown(folder);
    if (first.wasMade()) {
        return alerts.ask(Alert::questionMeaningNo(
                   filled(localized("Undo moves %i item(s) to the Trash. Are you sure?"), count),
                   details))
            == Alert::Yes;
    }
    if (count == 1 || !mainModel->confirmationForFileOperations())
        return true;
    return alerts.ask(Alert::question(
               filled(first.way == DoneItem::Trashed
                          ? localized("Undo puts %i item(s) back from the Trash. Are you sure?")
                          : localized("Undo moves %i item(s) back. Are you sure?"),
                      count),
               details))
        == Alert::Yes;
}

void Undo::run(const DoneItems &done, unsigned ticket, OperationRecord &record) // worker thread
{
    record.done = done;
    if (!copyMove.queue().wait(ticket))
        return;
    Undoing undoing({ programs, workspace, copyMove.journal(),
                      [this](const QString &line) { showLine(line); },
                      [this] { return copyMove.queue().isCancelled(); } });
    record.done = undoing.undo(done);
    // What was done before it is not to be undone in its place, by a person who tries again.
    if (!done.wereRefused() && !undoing.refused().isEmpty()) {
        const QList<DoneItem> &refused = undoing.refused();
        for (auto item = refused.crbegin(); item != refused.crend(); ++item)
            record.done.add(*item);
        record.done.setRefused();
    }
    if (!undoing.told().isEmpty())
        alerts.ask(Alert::failure(undoing.anyUndone() ? localized("Not everything could be undone.")
                                                      : localized("Undo failed!"),
                                  shortened(undoing.told())));
    else
        tellWhatIsBack(done);
    if (const DoneItem &first = done.items().first(); done.items().size() == 1)
        record.item = undoing.anyUndone() && !first.wasMade() ? first.from.path() : QString();
    copyMove.queue().end(ticket);
}

// Where no pane shows it; of what goes to the Trash the question has told.
void Undo::tellWhatIsBack(const DoneItems &done) const // worker thread
{
    const DoneItem &first = done.items().first();
    const QString &folder = first.from.folder;
    if (first.wasMade())
        return;
    onMainThread([&] {
        if (folder == mainModel->folder(Side::Left) || folder == mainModel->folder(Side::Right))
            return;
        const QString place = FileName::shown(folder);
        const auto count = done.items().size();
        windowController->showNotice(
            count == 1
                ? filled(localized("'%@' is back in '%@'."), FileName::shown(first.from.name),
                         place)
                : filled(filled(localized("%i items are back in '%@'."), int(count)), place));
    });
}

void Undo::showLine(const QString &line) const // any thread
{
    onMainThread([&] {
        if (display)
            display->showRunDetail(line);
    });
}
