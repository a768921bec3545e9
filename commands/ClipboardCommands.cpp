#include "commands/ClipboardCommands.h"

#include "commands/FileClipboard.h"
#include "commands/PaneCommands.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/MainModel.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"
#include "operations/SmallPrint.h"
#include "platform/Alerts.h"
#include "views/IncomingItems.h"

using ClippedFiles::Intent;
using DropDecision::Work;

ClipboardCommands::ClipboardCommands(PaneWindow &paneWindow, const MainModel &model,
                                     const PaneCommands &paneCommands, FileClipboard &fileClipboard,
                                     const IncomingItems &incomingItems, OperationDesk &desk,
                                     Alerts &alertsToAsk)
    : window(paneWindow)
    , mainModel(model)
    , panes(paneCommands)
    , clipboard(fileClipboard)
    , incoming(incomingItems)
    , twinleaf(desk)
    , alerts(alertsToAsk)
{
}

void ClipboardCommands::cutClicked()
{
    put(Intent::Cut);
}

void ClipboardCommands::copyClicked()
{
    put(Intent::Copy);
}

void ClipboardCommands::put(Intent intent)
{
    if (const QStringList paths = panes.selectedPaths(); !paths.isEmpty())
        clipboard.put(paths, intent);
}

void ClipboardCommands::copyNameClicked()
{
    QStringList names = panes.selectedPaths();
    for (QString &name : names)
        name = PathText::lastComponent(name);
    if (!names.isEmpty())
        FileClipboard::putText(names);
}

void ClipboardCommands::copyPathClicked()
{
    if (const QStringList paths = panes.selectedPaths(); !paths.isEmpty())
        FileClipboard::putText(paths);
}

void ClipboardCommands::pasteClicked()
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (list && !mainModel.folder(list->side()).isEmpty())
        pasteInto(mainModel.folder(list->side()), list->side());
}

void ClipboardCommands::tellOthers(const QStringList &addresses) const
{
    constexpr qsizetype Letters = 200; // of an address: more do not tell more
    QStringList lines;
    for (const QString &address : addresses)
        lines.append(FileName::shown(address.left(Letters)));
    alerts.ask(remark(localized("What lies on no disk of this computer cannot be pasted:"), lines));
}

void ClipboardCommands::pasteInto(const QString &folder, Side side)
{
    const auto held = clipboard.held();
    if (!held)
        return window.showNotice(
            localized("The program that holds the clipboard does not answer."));
    if (!held->others.isEmpty())
        tellOthers(held->others);
    else if (held->folders.isEmpty())
        return window.showNotice(localized("There are no files on the clipboard."));
    if (clipboard.isTaken(held->version))
        return window.showNotice(localized("What was cut is being moved already."));
    const auto parted = incoming.parted(held->folders, folder);
    if (!parted)
        return;
    const bool isCut = held->intent == Intent::Cut;
    const Work work = isCut ? Work::Move : Work::Copy;
    if (isCut && !parted->own.isEmpty())
        window.showNotice(localized("What was cut is in this folder already."));
    const auto &meant = isCut ? parted->others : held->folders;
    if (meant.isEmpty() || !incoming.isAgreed(work, meant, folder))
        return;
    if (!isCut)
        for (const DroppedItems &items : parted->own)
            twinleaf.duplicateItems({ .source = folder,
                                      .items = items.names,
                                      .side = side,
                                      .updateBoth = UpdateBoth::DragDropFinder });
    if (isCut)
        clipboard.take(held->version, parted->others.size());
    // As a drop from another program: the pane that gets them has the keyboard.
    incoming.carryOut(work, parted->others, folder, side, UpdateBoth::DragDropFinder,
                      isCut ? held->version : 0);
}
