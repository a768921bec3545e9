#include "operations/PaneRefresh.h"

#include "model/MainModel.h"
#include "model/Messages.h"
#include "model/PaneWindow.h"

#include <limits>

namespace {

int firstRow(const RowSet &rows)
{
    return rows.isEmpty() ? std::numeric_limits<int>::max() : rows.first();
}

} // namespace

void PaneRefresh::postDirectoryChangedNotification(Side side)
{
    mainModel->showFolder(side, { mainModel->folder(side) });
}

void PaneRefresh::selectRowIndex(int row, PaneTable &table)
{
    const int selected = qMin(row, table.rowCount());
    table.selectRow(selected);
    table.scrollToRow(selected);
}

void PaneRefresh::updateFileLists(const OperationRecord &record)
{
    if (record.operation == Operation::Archive) {
        for (const Side side : { Side::Left, Side::Right })
            if (mainModel->shows(side, record.item).value_or(false))
                postDirectoryChangedNotification(side);
        return;
    }
    const PaneTable *responder = windowController->getFirstResponderTableView();
    // With the focus on neither list, the left one stands for the active pane.
    const Side focus = responder ? responder->side() : Side::Left;
    PaneTable &active = windowController->getTableView(focus);
    PaneTable &other = windowController->getTableView(otherSide(focus));
    // The others do not hang on it: for them nobody is asked.
    const bool sameFolder = record.operation != Operation::Copy
        && record.operation != Operation::Move && record.operation != Operation::Duplicate
        && mainModel->panesShowSameFolder().value_or(false);
    const int activeRow = firstRow(active.selectedRows());
    const int otherRow = firstRow(other.selectedRows());

    const auto postAffected = [&] {
        if (sameFolder) {
            postDirectoryChangedNotification(Side::Left);
            postDirectoryChangedNotification(Side::Right);
        } else {
            postDirectoryChangedNotification(focus);
        }
    };
    switch (record.operation) {
    case Operation::Duplicate:
        // The keyboard may have gone to the other pane meanwhile, or the pane to another folder.
        for (const Side side : { focus, otherSide(focus) })
            if (mainModel->shows(side, record.item).value_or(false)) {
                postDirectoryChangedNotification(side);
                selectRowIndex(side == focus ? activeRow : otherRow,
                               windowController->getTableView(side));
            }
        break;
    case Operation::Copy:
        // Kept: only the pane opposite the focus, even when both show the target folder.
        postDirectoryChangedNotification(otherSide(focus));
        // A drag from another program ends in either pane, wherever the focus is.
        if (record.droppedOn == focus)
            postDirectoryChangedNotification(focus);
        break;
    case Operation::Move:
        postDirectoryChangedNotification(Side::Left);
        postDirectoryChangedNotification(Side::Right);
        selectRowIndex(activeRow, active);
        selectRowIndex(otherRow, other);
        break;
    case Operation::Delete:
        postAffected();
        selectRowIndex(activeRow, active);
        selectRowIndex(otherRow, other);
        break;
    case Operation::NewFolder:
    case Operation::NewFile:
    case Operation::Rename:
    case Operation::Info:
        postAffected();
        // What was made is seen: without a trace of it one would make it again. A name that was
        // changed to one that the filter leaves out goes, so that several can follow each other.
        if ((record.operation == Operation::NewFolder || record.operation == Operation::NewFile)
            && mainModel->getRowFromValueInFileList(focus, record.item) < 0
            && mainModel->wholeRows(focus).rowOfPath(record.item) >= 0)
            mainModel->setFilter(focus, {});
        if (const int row = mainModel->getRowFromValueInFileList(focus, record.item); row >= 0)
            selectRowIndex(row, active);
        break;
    case Operation::Undo:
        for (const Side side : { focus, otherSide(focus) })
            postDirectoryChangedNotification(side);
        for (const Side side : { focus, otherSide(focus) })
            if (const int row = mainModel->getRowFromValueInFileList(side, record.item);
                !record.item.isEmpty() && row >= 0) {
                selectRowIndex(row, windowController->getTableView(side));
                break;
            }
        break;
    case Operation::Archive: // above
        break;
    }
    active.redraw();
    other.redraw();
    windowController->updateMainWindow();
}
