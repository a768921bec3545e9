#pragma once

#include <QByteArrayView>

namespace VersionText {

// A version as a number: four bits a character, digits and upper-case letters up to F by their
// value, anything else as 0. Kept: a dot shifts too, and so does a line end after the text.
qint32 hexValue(QByteArrayView text);

} // namespace VersionText
