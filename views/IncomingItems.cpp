#include "views/IncomingItems.h"

#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/OperationAlerts.h"
#include "model/OperationDesk.h"

using DropDecision::Work;

namespace {

// Each is asked about, and is a run of its own.
constexpr int MostFolders = 1000;

} // namespace

IncomingItems::IncomingItems(const MainModel &model, const FileQueries &fileQueries,
                             OperationDesk &desk, Alerts &alertsToAsk)
    : mainModel(model)
    , queries(fileQueries)
    , twinleaf(desk)
    , alerts(alertsToAsk)
{
}

std::optional<IncomingItems::Parted> IncomingItems::parted(const QList<DroppedItems> &folders,
                                                           const QString &destination) const
{
    if (folders.size() > MostFolders) {
        alerts.ask(Alert::error(filled(
            localized("Items of more than %i folders cannot be taken at once!"), MostFolders)));
        return std::nullopt;
    }
    Parted parted;
    for (const DroppedItems &items : folders) {
        const auto same =
            items.source == destination ? true : queries.isSameItem(items.source, destination);
        if (!same)
            return std::nullopt; // given up
        (*same ? parted.own : parted.others).append(items);
    }
    return parted;
}

// The listings of both panes know the sizes of what lies in them.
Alert IncomingItems::confirmation(Work work, const QList<DroppedItems> &folders,
                                  const QString &destination) const
{
    OperationAlerts::Subject subject { .to = destination };
    for (const DroppedItems &items : folders) {
        subject.count += items.names.size();
        subject.name = items.names.first();
    }
    if (folders.size() == 1) {
        subject.from = folders.first().source;
        for (const Side side : { Side::Left, Side::Right })
            if (mainModel.folder(side) == subject.from)
                subject.bytes =
                    OperationAlerts::sizeOf(mainModel.wholeRows(side), folders.first().names);
    }
    if (work == Work::Alias)
        return Alert::question(
            localized("Are you sure that you want to create an alias from this item(s)?"),
            OperationAlerts::described(subject));
    return OperationAlerts::areYouSure(work == Work::Copy ? Operation::Copy : Operation::Move,
                                       subject);
}

bool IncomingItems::isAgreed(Work work, const QList<DroppedItems> &folders,
                             const QString &destination) const
{
    return !mainModel.confirmationForFileOperations()
        || alerts.ask(confirmation(work, folders, destination)) == Alert::Yes;
}

void IncomingItems::carryOut(Work work, const QList<DroppedItems> &folders,
                             const QString &destination, Side side, UpdateBoth update,
                             unsigned cut) const
{
    for (const DroppedItems &items : folders) {
        const OperationRequest request { .source = items.source,
                                         .destination = destination,
                                         .items = items.names,
                                         .side = side,
                                         .updateBoth = update,
                                         .cut = cut };
        switch (work) {
        case Work::Alias:
            twinleaf.createAlias(request);
            break;
        case Work::Copy:
            twinleaf.copyItems(request);
            break;
        case Work::Move:
            twinleaf.moveItems(request);
            break;
        }
    }
}
