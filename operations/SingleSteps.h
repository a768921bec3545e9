#pragma once

#include "model/OperationRecord.h"
#include "operations/RequestValidation.h"

class Alerts;
class CopyMove;
class Programs;
class Workspace;

// The operations of one step: new folder, rename, Trash, alias, duplicate. Each reports its failure
// with one alert; nothing is replaced, nothing is undone. Worker threads.
class SingleSteps final {
public:
    SingleSteps(Alerts &alerts, Programs &programs, Workspace &workspace, CopyMove &copyMove);

    void newFolder(const AcceptedRequest &request, OperationRecord &record);
    void renameItem(const AcceptedRequest &request, OperationRecord &record);
    void deleteItems(const AcceptedRequest &request);
    void createAlias(const AcceptedRequest &request);
    void duplicateItem(const QString &source, const QString &destination);

private:
    bool moveAllToTrash(const AcceptedRequest &request);

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    CopyMove &copyMove;
};
