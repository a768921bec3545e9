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
