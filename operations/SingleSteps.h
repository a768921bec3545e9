#pragma once

#include "model/OperationRecord.h"
#include "model/OperationRequest.h"

class Alerts;
class CopyMove;
class Programs;
class Workspace;

// The operations of one step: new folder, rename, Trash, alias, duplicate. Each reports its failure
// with one alert; nothing is replaced, nothing is undone. Worker threads.
class SingleSteps final {
public:
    SingleSteps(Alerts &alerts, Programs &programs, Workspace &workspace, CopyMove &copyMove);

    void newFolder(const OperationRequest &request, OperationRecord &record);
    void renameItem(const OperationRequest &request, OperationRecord &record);
    void deleteItems(const OperationRequest &request);
    void createAlias(const OperationRequest &request);
    void duplicateItem(const QString &source, const QString &destination);

private:
    // What did not go, as lines for a person: an item's name and why.
    QStringList moveAllToTrash(const OperationRequest &request);

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    CopyMove &copyMove;
};
