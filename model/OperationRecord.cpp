#include "model/OperationRecord.h"

QString operationWord(Operation operation)
{
    switch (operation) {
    case Operation::Copy:
        return QStringLiteral("TWCopyOperation");
    case Operation::Move:
        return QStringLiteral("TWMoveOperation");
    case Operation::NewFolder:
        return QStringLiteral("TWNewFolderOperation");
    case Operation::NewFile:
        return QStringLiteral("TWNewFileOperation");
    case Operation::Rename:
        return QStringLiteral("TWRenameOperation");
    case Operation::Delete:
        return QStringLiteral("TWDeleteOperation");
    case Operation::Duplicate:
        return QStringLiteral("TWDuplicateOperation");
    case Operation::Info:
        return QStringLiteral("TWInfoOperation");
    case Operation::Archive:
        return QStringLiteral("TWArchiveOperation");
    case Operation::Undo:
        return QStringLiteral("TWUndoOperation");
    }
    return {};
}
