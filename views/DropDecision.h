#pragma once

#include <Qt>

// What a drag is to do, as bits of a mask.
namespace DragOperation {
inline constexpr int Copy = 1, Link = 2, Generic = 4, Move = 16;
}

// The operation a drag offers, and the one it shows while over a pane, by the held modifier keys.
namespace DropDecision {

int draggingSourceOperationMask(Qt::KeyboardModifiers held);
int draggingUpdated(Qt::KeyboardModifiers held);

} // namespace DropDecision
