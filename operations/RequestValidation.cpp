#include "operations/RequestValidation.h"

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.operations", QtInfoMsg)

// A sixth entry, and items that are no list of names, do not compile.
const char *firstFault(const OperationRequest &request)
{
    if (request.side.isMissing() || request.updateBoth.isMissing())
        return "performFileOperation dictionary count != 5!";
    if (request.source.isEmpty())
        return "performFileOperation dictionary value for key 'Source' is empty!";
    if (request.source == request.destination)
        return "performFileOperation dictionary value for key 'Source' is equal to value for key "
               "'Destination'!";
    if (request.side.isEmpty())
        return "performFileOperation dictionary value for key 'Side' is empty!";
    if (!request.side.value())
        return "performFileOperation dictionary value for key 'Side' is not 'Left', 'left' or "
               "'Right', 'right'!";
    if (request.updateBoth.isEmpty())
        return "performFileOperation dictionary value for key 'UpdateBoth' is empty!";
    if (!request.updateBoth.value())
        return "performFileOperation dictionary value for key 'UpdateBoth' is not 'YES', 'NO', "
               "'DragDropCopy', 'DragDropMove' or 'DragDropFinder'!";
    return nullptr;
}

} // namespace

bool isPerformFileOperationDictionaryValid(const OperationRequest &request)
{
    const char *fault = firstFault(request);
    if (fault)
        qCWarning(log, "%s", fault);
    return !fault;
}
