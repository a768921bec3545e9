#pragma once

#include <QString>

// The windows in which desktops search for files.
namespace SearchWindow {

// Opens that of the first one that is installed and can be started, with this text. False when
// there is none. Any thread.
bool show(const QString &text);

} // namespace SearchWindow
