#pragma once

#include <QString>

// The person's terminal in a folder of theirs. Any thread.
namespace TerminalInFolder {

// As Workspace::openTerminal.
bool open(const QString &folder, QString *reason);

} // namespace TerminalInFolder
