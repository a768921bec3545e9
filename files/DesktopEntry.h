#pragma once

#include <QByteArray>

#include <optional>

// Desktop entries, by the standard of freedesktop.org. Any thread.
namespace DesktopEntry {

// The value of a key in the main group of a file's content, as it is written there; of several the
// last one. Nothing where there is none.
std::optional<QByteArray> value(const QByteArray &content, QByteArrayView key);

} // namespace DesktopEntry
