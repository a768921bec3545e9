#include "commands/PermanentDeletion.h"

#include "files/PathText.h"
#include "files/Waiting.h"
#include "model/MainModel.h"
#include "model/OperationAlerts.h"
#include "model/OperationDesk.h"
#include "model/PaneWindow.h"

namespace {

// What stands at the names now; of what cannot be looked at, nothing that anything could be.
QList<FileIdentity> identitiesOf(const QString &folder, const QStringList &names)
{
    QList<FileIdentity> identities;
    identities.reserve(names.size());
    for (const QString &name : names) {
        const auto status = fileStatus(PathText::joined(folder, name), Links::NoFollow);
        identities.append(status ? status->identity : FileIdentity());
    }
    return identities;
}

} // namespace

PermanentDeletion::PermanentDeletion(PaneWindow &paneWindow, const MainModel &model,
                                     OperationDesk &desk, Waiting &wait, Alerts &alertsToAsk)
    : window(paneWindow)
    , mainModel(model)
    , twinleaf(desk)
    , waiting(wait)
    , alerts(alertsToAsk)
{
}

void PermanentDeletion::deletePermanentlyClicked()
{
    const PaneTable *list = window.getFirstResponderTableView();
    if (!list || !isItemRow(list->selectedRow()))
        return;
    const Side side = list->side();
    const RowSet rows = list->selectedRows();
    const Listing listing = mainModel.rows(side);
    if (rows.isEmpty() || rows.contains(ParentRow) || rows.last() >= listing.size())
        return;
    OperationRequest request { .source = PathText::parent(listing[rows.first()].path()),
                               .side = side,
                               .updateBoth = UpdateBoth::Yes };
    for (const int row : rows)
        request.items.append(PathText::lastComponent(listing[row].path()));
    // Before the question: what it is about, and nothing else, goes.
    const auto seen =
        waiting.forAnswer(request.source, [folder = request.source, names = request.items] {
            return identitiesOf(folder, names);
        });
    if (!seen)
        return; // given up
    const Alert question = Alert::questionMeaningNo(
        filled(localized("Are you sure that you want to delete the selected %i item(s) for good? "
                         "This cannot be undone."),
               int(rows.size())),
        OperationAlerts::described(OperationAlerts::subjectOf(listing, rows)));
    if (alerts.ask(question) == Alert::Yes)
        twinleaf.deletePermanently(request, *seen);
}
