#include "views/DropDecision.h"

#include "files/PathText.h"

#include <QHash>

namespace {

constexpr Qt::KeyboardModifiers CommandAndOption = Qt::ControlModifier | Qt::AltModifier;
// Many window managers keep Alt with the mouse for themselves.
constexpr Qt::KeyboardModifiers InPlaceOfOption = Qt::ControlModifier | Qt::ShiftModifier;

// Kept: the keys are compared as a whole, so that one modifier more (Shift with Alt) moves.
int operationForHeldKeys(Qt::KeyboardModifiers held, int withCommandAndOption)
{
    const auto keys =
        held & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (keys == CommandAndOption)
        return withCommandAndOption;
    return keys == Qt::AltModifier || keys == InPlaceOfOption ? DragOperation::Copy
                                                              : DragOperation::Move;
}

} // namespace

// Kept: with both keys the source offers "generic" and the target shows "link". The drop makes
// aliases by the source's answer; the pointer shows a link all the same.
int DropDecision::draggingSourceOperationMask(Qt::KeyboardModifiers held)
{
    return operationForHeldKeys(held, DragOperation::Generic);
}

int DropDecision::draggingUpdated(Qt::KeyboardModifiers held)
{
    return operationForHeldKeys(held, DragOperation::Link);
}

std::optional<DropDecision::Work> DropDecision::workOfMask(int mask)
{
    if (mask & DragOperation::Generic)
        return Work::Alias;
    if (mask & DragOperation::Copy)
        return Work::Copy;
    if (mask & DragOperation::Move)
        return Work::Move;
    return std::nullopt;
}

QList<DroppedItems> DropDecision::byFolder(const QStringList &paths)
{
    QList<DroppedItems> folders;
    QHash<QString, qsizetype> places;
    for (const QString &path : paths) {
        const QString folder = PathText::parent(path);
        auto place = places.constFind(folder);
        if (place == places.constEnd()) {
            place = places.insert(folder, folders.size());
            folders.append({ folder, {} });
        }
        folders[*place].names.append(PathText::lastComponent(path));
    }
    return folders;
}
