#include "window/PaneCommands.h"

#include "model/MainModel.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"
#include "platform/Localized.h"
#include "util/FileQueries.h"
#include "util/PathText.h"
#include "window/MenuValidation.h"

QString nameOfDuplicate(const QString &name, bool isFolder)
{
    if (isFolder)
        return name + localized(" Copy");
    const QString extension = PathText::extension(name);
    const QString copy = PathText::withoutExtension(name) + localized(" Copy");
    return extension.isEmpty() ? copy : PathText::withExtension(copy, extension);
}

PaneCommands::PaneCommands(PaneWindow &paneWindow, MessageBus &messages, const MainModel &model,
                           OperationDesk &desk, const FileQueries &fileQueries)
    : window(paneWindow)
    , bus(messages)
    , mainModel(model)
    , twinleaf(desk)
    , queries(fileQueries)
{
}

PaneTable *PaneCommands::listOnItem() const
{
    PaneTable *list = window.getFirstResponderTableView();
    return list && isRow(list->selectedRow()) ? list : nullptr;
}

void PaneCommands::post(const Message<ItemRequest> &message) const
{
    if (const PaneTable *list = listOnItem())
        bus.post(message,
                 { .side = list->side(),
                   .item = list->selectedRows(),
                   .seen = mainModel.rows(list->side()) });
}

void PaneCommands::copyButtonClicked()
{
    post(CopyItem);
}

void PaneCommands::moveButtonClicked()
{
    post(MoveItem);
}

void PaneCommands::deleteButtonClicked()
{
    post(DeleteItem);
}

void PaneCommands::renameButtonClicked()
{
    if (const PaneTable *list = listOnItem())
        bus.post(RenameItem,
                 { .side = list->side(),
                   .item = { list->selectedRow() },
                   .seen = mainModel.rows(list->side()) });
}

void PaneCommands::newFolderButtonClicked()
{
    const PaneTable *list = window.getFirstResponderTableView();
    bus.post(NewFolder, { .side = list ? std::optional(list->side()) : std::nullopt });
}

void PaneCommands::openClicked()
{
    if (const PaneTable *list = window.getFirstResponderTableView())
        bus.post(GetRows[list->side()],
                 { .rows = list->selectedRows(), .seen = mainModel.rows(list->side()) });
}

void PaneCommands::reloadClicked()
{
    if (const PaneTable *list = window.getFirstResponderTableView())
        bus.post(DirectoryChanged[list->side()],
                 { .path = window.getCurrentPathFromSegmentedControl(list->side()) });
}

void PaneCommands::duplicateClicked()
{
    const PaneTable *list = listOnItem();
    if (!list || !mainModel.rows(list->side()).holds(list->selectedRow()))
        return;
    const Entry entry = mainModel.rows(list->side())[list->selectedRow()];
    const QString path = entry.path();
    const QString name = nameOfDuplicate(entry.name(), queries.isDirectory(path));
    twinleaf.duplicateItem(path, PathText::joined(PathText::parent(path), name));
}
