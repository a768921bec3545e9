#pragma once

#include <QByteArray>
#include <QString>

// File names are bytes; inside the program a path is a QString in which each byte that is not part
// of valid UTF-8 stands as a lone surrogate U+DC80..U+DCFF. Any byte sequence survives the way
// there and back. All functions are pure and may be called on any thread.
namespace FileName {

QByteArray toBytes(QStringView path);
QString fromBytes(QByteArrayView bytes);

// The text to show for a name or path: undecodable bytes become U+FFFD, control characters and
// direction overrides are written as escapes ("\n", "\x1B", "\u202E"), so that a name stays one
// line.
QString shown(const QString &name);

} // namespace FileName
