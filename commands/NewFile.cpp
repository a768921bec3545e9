#include "commands/NewFile.h"

#include "base/Localized.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"

NewFile::NewFile(PaneWindow &paneWindow, const MainModel &model, const FileQueries &fileQueries,
                 OperationDesk &desk)
    : window(paneWindow)
    , mainModel(model)
    , queries(fileQueries)
    , twinleaf(desk)
{
}

void NewFile::newFileClicked()
{
    if (const PaneTable *list = window.getFirstResponderTableView())
        ask(mainModel.folder(list->side()), {}, list->side());
}

void NewFile::askAgain(const OperationRequest &refused)
{
    if (const auto side = refused.side.value(); side && queries.isThere(refused.source))
        ask(refused.source, refused.items.value(0), *side);
}

void NewFile::ask(const QString &folder, const QString &suggested, Side side)
{
    const QString name =
        window.getStringFromInputSheet(localized("Please input new file name:"), suggested);
    if (!name.isEmpty())
        twinleaf.newFile({ .source = folder,
                           .items = { name },
                           .side = side,
                           .updateBoth = mainModel.updateForOnePane() });
}
