#pragma once

#include <optional>

class QKeyEvent;

// The row to which a key leads through the pictures, wherever the keyboard is: the arrows, space
// and backspace to the next one and the one before, Home and End; nothing for any other key. `row`
// is -1 as long as none is chosen.
std::optional<int> rowOfKey(const QKeyEvent &key, int row, int count);
