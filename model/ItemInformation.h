#pragma once

#include "model/OperationRequest.h"

// The sheet that shows everything about one item, as the pane model asks for it.
class ItemInformation {
public:
    virtual ~ItemInformation() = default;
    virtual void showInfoSheet(const OperationRequest &request) = 0;
};
