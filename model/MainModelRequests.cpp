#include "model/MainModel.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "model/CurrentRows.h"
#include "model/FileQueries.h"
#include "model/ItemInformation.h"
#include "model/Launching.h"
#include "model/OperationAlerts.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"

using namespace Qt::StringLiterals;

namespace {

QStringList names(const Listing &listing, const RowSet &rows)
{
    QStringList names;
    for (const int row : rows)
        names.append(PathText::lastComponent(listing[row].path()));
    return names;
}

std::optional<FileIdentity> identityOf(const QString &path) // worker thread
{
    const auto status = fileStatus(path, Links::NoFollow);
    return status ? std::optional(status->identity) : std::nullopt;
}

// The one row of a request for one item, or nothing: row 0 and rows that are gone are refused.
std::optional<int> singleRow(const RowSet &rows)
{
    return rows.size() == 1 && isItemRow(rows.first()) ? std::optional(rows.first()) : std::nullopt;
}

// Says so when ".." is among the rows: its path is the listed folder's own, in which none of the
// other names lie.
bool refusesParent(Alerts &alerts, const RowSet &rows)
{
    if (!rows.contains(ParentRow))
        return false;
    Alert alert = Alert::error(localized(
        "The previous folder ('..') cannot be worked on with! Operation will be aborted!"));
    alert.style = Alert::Style::Informational;
    alerts.ask(alert);
    return true;
}

} // namespace

std::optional<bool> MainModel::shows(Side side, const QString &otherFolder) const
{
    const QString shown = folder(side);
    return shown == otherFolder ? true : queries.isSameItem(shown, otherFolder);
}

std::optional<bool> MainModel::panesShowSameFolder() const
{
    return shows(Side::Left, folder(Side::Right));
}

UpdateBoth MainModel::updateForOnePane() const
{
    return folder(Side::Left) == folder(Side::Right) ? UpdateBoth::Yes : UpdateBoth::No;
}

void MainModel::showItemInfo(const ItemRequest &request)
{
    const Side side = request.side.value_or(Side::Right);
    const auto row = singleRow(currentRows(request.item, request.seen, rows(side)));
    if (!row || !infoSheetController)
        return;
    const QString path = rows(side)[*row].path();
    infoSheetController->showInfoSheet({ .source = PathText::parent(path),
                                         .items = { PathText::lastComponent(path) },
                                         .side = request.side,
                                         .updateBoth = updateForOnePane() });
}

void MainModel::copyItem(const ItemRequest &request)
{
    requestCopyMove(request, Operation::Copy);
}

void MainModel::moveItem(const ItemRequest &request)
{
    requestCopyMove(request, Operation::Move);
}

void MainModel::requestCopyMove(const ItemRequest &request, Operation operation)
{
    const Side side = request.side.value_or(Side::Right);
    const Listing listing = this->rows(side);
    const RowSet rows = currentRows(request.item, request.seen, listing);
    if (rows.isEmpty())
        return;
    // Built before anything is asked: the rows shown now are the ones the answer is about.
    const OperationRequest dictionary = getDictionaryForCopyMove(request.side, listing, rows);
    const auto intoItself = panesShowSameFolder();
    if (!intoItself)
        return; // given up
    if (*intoItself) {
        alerts.ask(OperationAlerts::intoItself(operation));
        return;
    }
    if (refusesParent(alerts, rows))
        return;
    if (confirmationForFileOperations()
        && alerts.ask(OperationAlerts::areYouSure(
               operation, OperationAlerts::subjectOf(listing, rows, dictionary.destination)))
            != Alert::Yes)
        return;
    if (operation == Operation::Copy)
        twinleaf->copyItems(dictionary);
    else
        twinleaf->moveItems(dictionary);
}

OperationRequest MainModel::getDictionaryForCopyMove(std::optional<Side> side,
                                                     const Listing &listing,
                                                     const RowSet &rows) const
{
    return { .source = PathText::parent(listing[rows.first()].path()),
             .destination = folder(otherSide(side.value_or(Side::Right))),
             .items = names(listing, rows),
             .side = side,
             .updateBoth = UpdateBoth::Yes };
}

void MainModel::newFolder(const NewFolderRequest &request)
{
    // Without an active pane there is no folder to make it in: a name is not asked for in vain.
    if (!request.side)
        return;
    askForNewFolder(folder(*request.side), {}, *request.side);
}

void MainModel::askForNewFolder(const QString &parent, const QString &suggested,
                                std::optional<Side> side)
{
    const QString name = windowController->getStringFromInputSheet(
        localized("Please input new folder name:"), suggested);
    if (!name.isEmpty())
        twinleaf->newFolder({ .source = parent,
                              .items = { name },
                              .side = side,
                              .updateBoth = updateForOnePane() });
}

void MainModel::deleteItem(const ItemRequest &request)
{
    const Side side = request.side.value_or(Side::Right);
    const Listing listing = this->rows(side);
    const RowSet rows = currentRows(request.item, request.seen, listing);
    if (rows.isEmpty())
        return;
    if (refusesParent(alerts, rows))
        return;
    const OperationRequest dictionary { .source = PathText::parent(listing[rows.first()].path()),
                                        .items = names(listing, rows),
                                        .side = request.side,
                                        .updateBoth = updateForOnePane() };
    if (confirmationForFileOperations()
        && alerts.ask(Alert::question(
               filled(localized(
                          "Are you sure that you want to move the selected %i item(s) to trash?"),
                      int(rows.size())),
               OperationAlerts::described(OperationAlerts::subjectOf(listing, rows))))
            != Alert::Yes)
        return;
    twinleaf->deleteItems(dictionary);
}

void MainModel::renameItem(const ItemRequest &request)
{
    const Side side = request.side.value_or(Side::Right);
    const auto row = singleRow(currentRows(request.item, request.seen, rows(side)));
    if (!row)
        return;
    const QString path = rows(side)[*row].path();
    askForNewName(path, PathText::lastComponent(path), request.side);
}

void MainModel::askAgain(const OperationRequest &refused)
{
    const std::optional<Side> side = refused.side.value();
    if (!queries.isThere(refused.source))
        return;
    if (refused.destination.isEmpty()) // a new folder, which has items
        askForNewFolder(refused.source, refused.items.value(0), side);
    else
        askForNewName(
            refused.source,
            refused.destination.mid(PathText::joined(PathText::parent(refused.source), {}).size()),
            side);
}

void MainModel::askForNewName(const QString &path, const QString &suggested,
                              std::optional<Side> side)
{
    const auto before = waiting.forAnswer(path, [path] { return identityOf(path); });
    if (!before)
        return; // given up
    const QString name =
        windowController->getStringFromInputSheet(localized("Please enter new name:"), suggested);
    if (name.isEmpty() || name == PathText::lastComponent(path))
        return;
    // Other programs may have put another item there while the sheet stood.
    const auto now = waiting.forAnswer(path, [path] { return identityOf(path); });
    if (now && *before && *now && *now != *before) {
        alerts.ask(Alert::failure(localized("Rename failed!"),
                                  FileName::shown(PathText::lastComponent(path)) + u": "_s
                                      + localized("It is not the item any more that was shown.")));
        return;
    }
    // The source of a rename is the item itself, by its full path.
    twinleaf->renameItem({ .source = path,
                           .destination = PathText::joined(PathText::parent(path), name),
                           .side = side,
                           .updateBoth = updateForOnePane() });
}

void MainModel::openFileWithApplication(const OpenWithRequest &request)
{
    const Side side = request.side.value_or(Side::Right);
    const Listing &listing = this->rows(side);
    QStringList paths;
    const RowSet rows = currentRows(request.items, request.seen, listing);
    for (const int row : rows)
        paths.append(listing[row].path());
    launching.openFiles(paths, request.appPath);
}
