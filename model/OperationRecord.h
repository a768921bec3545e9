#pragma once

#include "model/DoneItem.h"
#include "model/OperationRequest.h"

#include <optional>

enum class Operation {
    Copy,
    Move,
    NewFolder,
    NewFile,
    Rename,
    Delete,
    Duplicate,
    Info,
    Archive,
    Undo
};

// "TWCopyOperation", "TWMoveOperation", ...: the operation in the log twinleaf.operations.
QString operationWord(Operation operation);

// What a worker leaves behind for the refresh of the panes, and to be undone.
struct OperationRecord {
    Operation operation = Operation::Copy;
    // The item to select afterwards: the new folder's or file's, the renamed or the inspected
    // item's full path. Of a duplicate, of packing and unpacking: the folder to list again.
    QString item {};
    // Where something from another program was dropped.
    std::optional<Side> droppedOn {};
    // A new folder, a new file or a rename that failed, as was told.
    std::optional<OperationRequest> refused {};
    // What it has done; of an undo that was cancelled, what is left to be undone.
    DoneItems done {};
    // What it has done cannot be undone, and nothing from before it is to be taken for it.
    bool isFinal = false;
    unsigned cut = 0; // as the request has it
};
