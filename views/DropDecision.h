#pragma once

#include <QList>
#include <QStringList>

#include <optional>

// What a drag is to do, as bits of a mask.
namespace DragOperation {
inline constexpr int Copy = 1, Link = 2, Generic = 4, Move = 16;
}

// Dropped items of one folder.
struct DroppedItems {
    QString source;
    QStringList names;
};

// The operation a drag offers, and the one it shows while over a pane, by the held modifier keys.
namespace DropDecision {

int draggingSourceOperationMask(Qt::KeyboardModifiers held);
int draggingUpdated(Qt::KeyboardModifiers held);

// What a drop is to do; nothing when the mask has none of the bits for it. Generic comes before
// copy, copy before move.
enum class Work { Alias, Copy, Move };
std::optional<Work> workOfMask(int mask);

// The items by their folders, in the order in which they were dropped.
QList<DroppedItems> byFolder(const QStringList &paths);

} // namespace DropDecision
