#pragma once

#include "model/OperationRequest.h"

#include <QStringList>

// A request behind the door: checked once, typed from here on. A worker gets a copy.
struct AcceptedRequest {
    QString source;
    QString destination;
    QStringList items;
    Side side = Side::Left;
    UpdateBoth updateBoth = UpdateBoth::No;
};

// The gate in front of every operation. The first fault is written to the log and refuses the
// request.
bool isPerformFileOperationDictionaryValid(const OperationRequest &request);

// The request as the operations use it, or nothing when it is invalid.
std::optional<AcceptedRequest> acceptRequest(const OperationRequest &request);
