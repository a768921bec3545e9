#include "sheets/viewer/ViewSelected.h"

#include "model/MainModel.h"
#include "model/MessageBus.h"
#include "model/Messages.h"
#include "model/PaneWindow.h"
#include "sheets/viewer/Viewer.h"

void viewSelected(Viewer &viewer, PaneWindow &window, const MainModel &mainModel, MessageBus &bus)
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (!list || !isItemRow(list->selectedRow()))
        return;
    // As they are now, whatever is listed when the disk has answered.
    const RowsOfPane selected { list->selectedRows(), mainModel.rows(list->side()) };
    const int row = list->selectedRow();
    if (selected.seen.holds(row) && !viewer.view(selected.seen[row].path()))
        bus.post(ShowFolderSize[list->side()], selected);
}
