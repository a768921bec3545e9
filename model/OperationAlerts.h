#pragma once

#include "model/OperationRecord.h"
#include "platform/Alerts.h"

// What a person is told or asked before items are copied or moved, by a command or by a drop.
namespace OperationAlerts {

Alert intoItself(Operation copyOrMove);
Alert areYouSure(Operation copyOrMove);

} // namespace OperationAlerts
