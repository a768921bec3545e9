#pragma once

#include "reader/FileBytes.h"

#include <QImage>
#include <QSize>

struct DecodedPicture {
    QImage image; // null when it is broken, too large or none
    QSize size; // of the picture itself
};

// Turned as it is to be seen, in its proportions at most as large as the bound. The first one of a
// file that has several. By content, whatever the decoders know.
DecodedPicture decodePicture(FileBytes &file, const QSize &bound);
