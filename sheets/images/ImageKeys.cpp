#include "sheets/images/ImageKeys.h"

#include <QKeyEvent>

#include <algorithm>

std::optional<int> rowOfKey(const QKeyEvent &key, int row, int count)
{
    if (count == 0 || (key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return std::nullopt;
    switch (key.key()) {
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_Space:
        return std::min(row + 1, count - 1);
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Backspace:
        return std::max(row - 1, 0);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return count - 1;
    default:
        return std::nullopt;
    }
}
