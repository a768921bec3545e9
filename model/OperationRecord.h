#pragma once

#include "model/OperationRequest.h"

#include <optional>

enum class Operation { Copy, Move, NewFolder, Rename, Delete, Duplicate, Info, Archive };

// "TWCopyOperation", "TWMoveOperation", ...: the operation in the log twinleaf.operations.
QString operationWord(Operation operation);

// What a worker leaves behind for the refresh of the panes.
struct OperationRecord {
    Operation operation = Operation::Copy;
    // The item to select afterwards: the new folder's, the renamed or the inspected item's full
    // path. Of a duplicate, of packing and unpacking: the folder to list again.
    QString item {};
    // Where something from another program was dropped.
    std::optional<Side> droppedOn {};
    // A new folder or a rename that failed, as was told.
    std::optional<OperationRequest> refused {};
};
