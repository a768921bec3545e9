#pragma once

#include "model/OperationRecord.h"
#include "model/OperationRequest.h"
#include "operations/RunQueue.h"

class Alerts;
class CopyMove;
class Programs;
class Workspace;

// The operations of one step: new folder, new file, rename, Trash, alias, duplicate. Each reports
// its failure with one alert and tells what it has done; nothing is replaced. Worker threads.
class SingleSteps final {
public:
    SingleSteps(Alerts &alerts, Programs &programs, Workspace &workspace, CopyMove &copyMove);

    void newFolder(const OperationRequest &request, OperationRecord &record);
    void newFile(const OperationRequest &request, OperationRecord &record);
    void renameItem(const OperationRequest &request, OperationRecord &record);
    DoneItems deleteItems(const OperationRequest &request);
    DoneItems createAlias(const OperationRequest &request);
    DoneItems duplicateItem(const QString &source, const QString &destination);
    // One after the other, each under a name that is free, until the run is cancelled.
    DoneItems duplicateItems(const OperationRequest &request, RunQueue::Ticket ticket);

private:
    // What did not go, as lines for a person: an item's name and why.
    QStringList moveAllToTrash(const OperationRequest &request, DoneItems &done);

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    CopyMove &copyMove;
};
