#pragma once

#include <QString>

#include <optional>

// A desktop entry with Type=Link and a file: URL, the desktop's own kind of alias file (Desktop
// Entry standard of freedesktop.org).
namespace LinkFile {

// Where it leads; nothing for any other file. Reads at most 64 KiB. Any thread.
std::optional<QString> target(const QString &path);

// The same of the content.
std::optional<QString> targetIn(const QByteArray &content);

} // namespace LinkFile
