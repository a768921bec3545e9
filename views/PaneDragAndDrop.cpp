#include "views/PaneDragAndDrop.h"

#include "base/Arrivals.h"
#include "files/FileUrls.h"
#include "model/CurrentRows.h"
#include "model/MainModel.h"
#include "model/OperationAlerts.h"
#include "views/PaneTableView.h"

#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QScrollBar>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr int EdgeHeight = 16; // pixels
constexpr auto KeysPause = std::chrono::milliseconds(30); // between looks at what is held
constexpr auto EdgePause = std::chrono::milliseconds(60); // a row each time

const QString UriList = u"text/uri-list"_s;

// By it a program of the same kind knows that a link stands for the "generic" that makes aliases.
const QString OwnItems = u"application/x-twinleaf-items"_s;

// What another program offers. The drags of others carry no "generic" bit, so they never make
// aliases.
int maskOfActions(const QDropEvent &event)
{
    const Qt::DropActions actions = event.possibleActions();
    int mask = 0;
    if (actions & Qt::LinkAction && event.mimeData()->hasFormat(OwnItems))
        mask |= DragOperation::Generic;
    if (actions & Qt::CopyAction)
        mask |= DragOperation::Copy;
    if (actions & Qt::MoveAction)
        mask |= DragOperation::Move;
    return mask;
}

// On Wayland no program hears of keys during a drag, and none can begin a second one while the
// button is held: the keys at the start count to the end. Nor is there an action for links.
bool startDecides()
{
    return QGuiApplication::platformName().startsWith("wayland"_L1);
}

Qt::KeyboardModifiers heldAtStart; // of the last drag of our own

Qt::KeyboardModifiers heldKeys(const QDropEvent &event)
{
    return startDecides() ? heldAtStart : event.modifiers();
}

Qt::DropAction linkAction()
{
    return startDecides() ? Qt::CopyAction : Qt::LinkAction;
}

// In a drag of our own the held keys decide, in one from outside what the other program offers.
int sourceMask(const QDropEvent &event)
{
    return event.source() ? DropDecision::draggingSourceOperationMask(heldKeys(event))
                          : maskOfActions(event);
}

// What a drag of our own offers to other programs.
Qt::DropAction offeredAction(Qt::KeyboardModifiers held)
{
    switch (DropDecision::draggingSourceOperationMask(held)) {
    case DragOperation::Generic:
        return linkAction();
    case DragOperation::Copy:
        return Qt::CopyAction;
    default:
        return Qt::MoveAction;
    }
}

Qt::DropAction shownAction(const QDropEvent &event)
{
    const int shown =
        event.source() ? DropDecision::draggingUpdated(heldKeys(event)) : maskOfActions(event);
    if (shown & (DragOperation::Link | DragOperation::Generic))
        return linkAction();
    if (shown & DragOperation::Copy)
        return Qt::CopyAction;
    return shown & DragOperation::Move ? Qt::MoveAction : Qt::IgnoreAction;
}

} // namespace

PaneDragAndDrop::PaneDragAndDrop(PaneTableView &table, const MainModel &model,
                                 const FileQueries &fileQueries, OperationDesk &desk,
                                 Alerts &alertsToAsk)
    : fileList(table)
    , mainModel(model)
    , alerts(alertsToAsk)
    , _incoming(model, fileQueries, desk, alertsToAsk)
{
    fileList.setDragEnabled(true);
    fileList.viewport()->setAcceptDrops(true);
    fileList.viewport()->installEventFilter(this);
    connect(&fileList, &PaneTableView::dragRequested, this, &PaneDragAndDrop::startDrag);
    _edgeScroll.setInterval(EdgePause);
    _edgeScroll.callOnTimeout(this, &PaneDragAndDrop::scrollAtEdge);
}

QMimeData *PaneDragAndDrop::writeRows(const QList<int> &rows) const
{
    const Listing &listing = mainModel.rows(fileList.side());
    QStringList paths;
    for (const int row : rows)
        if (listing.holds(row))
            paths.append(listing[row].path());
    auto *data = new QMimeData;
    data->setData(UriList, FileUrls::uriList(paths));
    data->setData(OwnItems, {});
    return data;
}

void PaneDragAndDrop::startDrag()
{
    const Listing seen = mainModel.rows(fileList.side());
    const RowSet rows = fileList.selectedRows();
    const QPixmap picture = fileList.dragPixmap();
    // What a drag offers is fixed when it begins. With other keys held it begins anew.
    for (bool keysChanged = true; keysChanged;) {
        keysChanged = false;
        heldAtStart = QGuiApplication::queryKeyboardModifiers();
        const Qt::DropAction offered = offeredAction(heldAtStart);
        auto *drag = new QDrag(&fileList);
        drag->setMimeData(writeRows(currentRows(rows, seen, mainModel.rows(fileList.side()))));
        drag->setPixmap(picture);
        QTimer keys;
        keys.callOnTimeout([&] {
            if (offeredAction(QGuiApplication::queryKeyboardModifiers()) == offered)
                return;
            keysChanged = true;
            QDrag::cancel();
        });
        if (!startDecides())
            keys.start(KeysPause);
        // What the other side makes of it is its own to do: nothing is ever deleted here
        // afterwards.
        drag->exec(offered, offered);
    }
}

int PaneDragAndDrop::proposedRow(int y) const
{
    const int row = fileList.rowAt(y);
    const Listing &listing = mainModel.rows(fileList.side());
    return listing.holds(row) && listing[row].isFolder() ? row : ParentRow;
}

void PaneDragAndDrop::showTarget()
{
    // ".." stands for the listed folder: the pane as a whole.
    const int row = proposedRow(_dragY);
    fileList.showDropTarget(isItemRow(row) ? row : NoRow);
}

QString PaneDragAndDrop::destinationOf(int row) const
{
    const Listing &listing = mainModel.rows(fileList.side());
    return listing.holds(row) ? listing[row].path() : mainModel.folder(fileList.side());
}

bool PaneDragAndDrop::acceptInto(const QString &destination, const QStringList &paths, int mask,
                                 bool fromOutside)
{
    const QList<DroppedItems> folders = DropDecision::byFolder(paths);
    const auto parted = _incoming.parted(folders, destination);
    if (!parted)
        return false;
    if (!parted->own.isEmpty()) {
        if (mask & DragOperation::Copy)
            alerts.ask(OperationAlerts::intoItself(Operation::Copy));
        if (mask & DragOperation::Move)
            alerts.ask(OperationAlerts::intoItself(Operation::Move));
        return false;
    }
    const auto work = DropDecision::workOfMask(mask);
    if (!work || !_incoming.isAgreed(*work, folders, destination))
        return false;
    const auto update = fromOutside         ? UpdateBoth::DragDropFinder
        : *work == DropDecision::Work::Move ? UpdateBoth::DragDropMove
                                            : UpdateBoth::DragDropCopy;
    _incoming.carryOut(*work, folders, destination, fileList.side(), update);
    return true;
}

void PaneDragAndDrop::dragMove(QDragMoveEvent &event)
{
    const Qt::DropAction action = shownAction(event);
    if (action == Qt::IgnoreAction || !_dragHoldsFiles) {
        dragEnded();
        event.ignore();
        return;
    }
    event.setDropAction(action);
    event.accept();
    _dragY = event.position().toPoint().y();
    showTarget();
    if (!_edgeScroll.isActive())
        _edgeScroll.start();
}

void PaneDragAndDrop::dragEnded()
{
    _edgeScroll.stop();
    fileList.hideDropTarget();
}

void PaneDragAndDrop::scrollAtEdge()
{
    QScrollBar *rows = fileList.verticalScrollBar();
    if (_dragY < EdgeHeight)
        rows->setValue(rows->value() - 1);
    else if (_dragY >= fileList.viewport()->height() - EdgeHeight)
        rows->setValue(rows->value() + 1);
    showTarget();
}

void PaneDragAndDrop::drop(QDropEvent &event)
{
    dragEnded();
    const auto paths = FileUrls::pathsOf(event.mimeData()->data(UriList));
    const int mask = sourceMask(event);
    if (!paths || mask == 0) {
        event.ignore();
        return;
    }
    // A source that hears of a move might delete what it dragged; here the target moves by itself,
    // and perhaps not at all: the person is asked first.
    event.setDropAction(event.possibleActions() & Qt::CopyAction ? Qt::CopyAction
                                                                 : Qt::IgnoreAction);
    event.accept();
    // The other program waits until this event is answered: what is to be asked comes after it, for
    // the folder that the row shows now.
    const QString destination = destinationOf(proposedRow(event.position().toPoint().y()));
    const bool fromOutside = !event.source();
    QMetaObject::invokeMethod(
        this,
        [=, this] {
            Arrivals::deliver(this,
                              [=, this] { acceptInto(destination, *paths, mask, fromOutside); });
        },
        Qt::QueuedConnection);
}

bool PaneDragAndDrop::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        // Once for a drag: every look asks the other program again, for what may be a long list.
        _dragHoldsFiles =
            FileUrls::pathsOf(static_cast<QDragEnterEvent *>(event)->mimeData()->data(UriList))
                .has_value();
        [[fallthrough]];
    case QEvent::DragMove:
        dragMove(*static_cast<QDragMoveEvent *>(event));
        return true;
    case QEvent::DragLeave:
        dragEnded();
        return true;
    case QEvent::Drop:
        drop(*static_cast<QDropEvent *>(event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}
