#include "model/OperationRequest.h"

namespace {

constexpr struct {
    UpdateBoth value;
    const char *word;
} Words[] = {
    { UpdateBoth::Yes, "YES" },
    { UpdateBoth::No, "NO" },
    { UpdateBoth::DragDropCopy, "DragDropCopy" },
    { UpdateBoth::DragDropMove, "DragDropMove" },
    { UpdateBoth::DragDropFinder, "DragDropFinder" },
};

} // namespace

QString updateBothWord(UpdateBoth value)
{
    for (const auto &entry : Words) {
        if (entry.value == value)
            return QString::fromLatin1(entry.word);
    }
    return {};
}

std::optional<UpdateBoth> updateBothFromWord(const QString &word)
{
    for (const auto &entry : Words) {
        if (word == QLatin1StringView(entry.word))
            return entry.value;
    }
    return std::nullopt;
}

OperationRequest operationRequest(std::optional<Side> side, const QString &source,
                                  const QString &destination, const QStringList &items,
                                  UpdateBoth updateBoth)
{
    OperationRequest request {
        { RequestKey::Source, source },
        { RequestKey::Destination, destination },
        { RequestKey::Items, items },
        { RequestKey::UpdateBoth, updateBothWord(updateBoth) },
    };
    if (side)
        request.insert(RequestKey::Side, sideWord(*side));
    return request;
}
