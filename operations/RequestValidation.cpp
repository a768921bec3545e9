#include "operations/RequestValidation.h"

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.operations")

// Nothing when the entry is missing or no string: such an entry equals no text, not even "".
std::optional<QString> text(const OperationRequest &request, const QString &key)
{
    const QVariant value = request.value(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

const char *firstFault(const OperationRequest &request)
{
    if (request.size() != 5)
        return "performFileOperation dictionary count != 5!";
    const auto source = text(request, RequestKey::Source);
    const auto destination = text(request, RequestKey::Destination);
    if (source && source->isEmpty())
        return "performFileOperation dictionary value for key 'Source' is empty!";
    if (source && source == destination)
        return "performFileOperation dictionary value for key 'Source' is equal to value for key "
               "'Destination'!";
    // Only a QStringList is an array of names here; a list of anything is refused.
    if (request.value(RequestKey::Items).typeId() != QMetaType::QStringList)
        return "performFileOperation dictionary value for key 'Items' isn't a NSArray!";
    const auto side = text(request, RequestKey::Side);
    if (side && side->isEmpty())
        return "performFileOperation dictionary value for key 'Side' is empty!";
    if (!side || !sideFromWord(*side))
        return "performFileOperation dictionary value for key 'Side' is not 'Left', 'left' or "
               "'Right', 'right'!";
    const auto update = text(request, RequestKey::UpdateBoth);
    if (update && update->isEmpty())
        return "performFileOperation dictionary value for key 'UpdateBoth' is empty!";
    if (!update || !updateBothFromWord(*update))
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

std::optional<AcceptedRequest> acceptRequest(const OperationRequest &request)
{
    if (!isPerformFileOperationDictionaryValid(request))
        return std::nullopt;
    return AcceptedRequest {
        request.value(RequestKey::Source).toString(),
        request.value(RequestKey::Destination).toString(),
        request.value(RequestKey::Items).toStringList(),
        *sideFromWord(request.value(RequestKey::Side).toString()),
        *updateBothFromWord(request.value(RequestKey::UpdateBoth).toString()),
    };
}
