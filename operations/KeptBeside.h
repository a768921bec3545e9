#pragma once

#include <QByteArray>

#include <optional>

// Renames an entry to the first free name of "name (1)", "name (2)", ... in a folder, shortened
// where it would not fit, and answers it. Any worker thread.
std::optional<QByteArray> keepBeside(int fromFolder, const QByteArray &entry, int folder,
                                     const QByteArray &name);
