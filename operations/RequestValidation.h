#pragma once

#include "model/OperationRequest.h"

// The one door in front of every operation. The first fault is written to the log and refuses the
// request.
bool isPerformFileOperationDictionaryValid(const OperationRequest &request);

// One that has passed the door.
using AcceptedRequest = OperationRequest;
