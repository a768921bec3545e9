#include "commands/PaneCommands.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"
#include "operations/DuplicateName.h"
#include "operations/Packing.h"
#include "platform/Alerts.h"
#include "platform/OpenPanel.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

using namespace Qt::StringLiterals;

PaneCommands::PaneCommands(PaneWindow &paneWindow, MessageBus &messages, MainModel &model,
                           OperationDesk &desk, const FileQueries &fileQueries,
                           UserDefaults &settings, OpenPanel &panel, Alerts &alertsToAsk)
    : window(paneWindow)
    , bus(messages)
    , mainModel(model)
    , twinleaf(desk)
    , queries(fileQueries)
    , defaults(settings)
    , openPanel(panel)
    , alerts(alertsToAsk)
{
}

PaneTable *PaneCommands::listOnItem() const
{
    PaneTable *list = window.getFirstResponderTableView();
    return list && isItemRow(list->selectedRow()) ? list : nullptr;
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

void PaneCommands::postSelectedRow(const Message<ItemRequest> &message) const
{
    if (const PaneTable *list = listOnItem())
        bus.post(message,
                 { .side = list->side(),
                   .item = { list->selectedRow() },
                   .seen = mainModel.rows(list->side()) });
}

void PaneCommands::renameButtonClicked()
{
    postSelectedRow(RenameItem);
}

void PaneCommands::infoClicked()
{
    postSelectedRow(ShowInfo);
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
        mainModel.showFolder(list->side(), { .path = mainModel.folder(list->side()) });
}

void PaneCommands::showHiddenFilesClicked()
{
    defaults.setValue(Settings::ShowHiddenFiles, !mainModel.showHiddenFiles());
    mainModel.setUserDefaultValues();
    for (const Side side : { Side::Left, Side::Right })
        mainModel.showFolder(side, { .path = mainModel.folder(side) });
}

void PaneCommands::duplicateClicked()
{
    const QString path = listOnItem() ? selectedPath() : QString();
    if (path.isEmpty())
        return;
    const auto looked = queries.lookAtOpened(path);
    if (!looked)
        return; // given up
    const QString name = nameOfDuplicate(PathText::lastComponent(path), looked->isDirectory);
    twinleaf.duplicateItem(path, PathText::joined(PathText::parent(path), name));
}

void PaneCommands::openWithClicked()
{
    if (const auto application = openPanel.chooseApplication())
        openWith(*application);
}

void PaneCommands::openWith(const QString &application)
{
    OpenWithRequest request { .appPath = application };
    if (const PaneTable *list = window.getFirstResponderTableView()) {
        request.items = list->selectedRows();
        request.side = list->side();
        request.seen = mainModel.rows(list->side());
    }
    bus.post(OpenFileWithApplication, request);
}

void PaneCommands::packageContentClicked()
{
    mainModel.setInsideBundle(true);
    if (const PaneTable *list = window.getFirstResponderTableView())
        if (const QString path = selectedPath(); !path.isEmpty())
            mainModel.showFolder(list->side(), { .path = path });
}

void PaneCommands::ejectClicked()
{
    const QString path = selectedPath();
    if (path.isEmpty() || _ejecting.contains(path))
        return;
    _ejecting.insert(path);
    window.setProgressIndicator(true);
    QString reason;
    // What is not written yet takes its time.
    const bool ejected = queries.unmountVolume(path, &reason);
    window.setProgressIndicator(false);
    _ejecting.remove(path);
    if (!ejected)
        alerts.ask(Alert::failure(filled(localized("'%@' could not be ejected!"),
                                         FileName::shown(PathText::lastComponent(path))),
                                  FileName::shown(reason)));
}

void PaneCommands::archiveClicked()
{
    const PaneTable *list = listOnItem();
    if (!list)
        return;
    // Those asked about, whatever is listed when the sheet was answered. ".." would pack everything
    // around them.
    const QStringList items = selectedPaths();
    if (items.isEmpty())
        return;
    const QString destination = mainModel.folder(otherSide(list->side()));
    const QString suggested =
        PathText::withExtension(PathText::lastComponent(items.first()), u"zip"_s);
    const QString name =
        window.getStringFromInputSheet(localized("Please enter archive name:"), suggested);
    if (name.isEmpty())
        return;
    // Under its final name: that is the file which would be replaced.
    const QString archive = archiveFileName(name);
    const auto replaced = PathText::isItemName(archive)
        ? queries.itemAt(PathText::joined(destination, archive))
        : FileQueries::Item();
    if (!replaced)
        return; // given up
    if (replaced->status
        && alerts.ask(
               replaceArchiveQuestion(FileName::shown(PathText::joined(destination, archive))))
            != Alert::Yes)
        return;
    twinleaf.archiveItems(items, destination, name, replaced->status);
}

void PaneCommands::unpackClicked()
{
    const PaneTable *list = listOnItem();
    if (!list)
        return;
    const Listing &rows = mainModel.rows(list->side());
    const int row = list->selectedRows().first();
    if (!rows.holds(row))
        return;
    const QString archive = rows[row].path();
    const QString extension = PathText::extension(archive);
    if (extension != u"zip" && extension != u"gzip" && extension != u"cpgz") {
        Alert alert = Alert::error(filled(localized("'%@' is not an archive!"),
                                          FileName::shown(PathText::lastComponent(archive))));
        alert.style = Alert::Style::Informational;
        alerts.ask(alert);
        return;
    }
    twinleaf.unpackArchive(archive, mainModel.folder(otherSide(list->side())));
}

QString PaneCommands::selectedPath(bool orFirst) const
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (!list)
        return {};
    const int row = orFirst ? std::max(list->selectedRow(), 0) : list->selectedRow();
    const Listing &rows = mainModel.rows(list->side());
    return rows.holds(row) ? rows[row].path() : QString();
}

QStringList PaneCommands::selectedPaths() const
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (!list)
        return {};
    const Listing &rows = mainModel.rows(list->side());
    QStringList paths;
    const RowSet selected = list->selectedRows();
    for (const int row : selected)
        if (isItemRow(row) && rows.holds(row))
            paths.append(rows[row].path());
    return paths;
}
