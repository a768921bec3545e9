#pragma once

#include "pictures/PictureKind.h"

#include <QImage>
#include <QSize>

class ForeignFiles;

// What a picture is shown as.
struct LoadedPicture {
    enum class Outcome {
        Decoded,
        Elsewhere, // not for this program: see decodedByReader
        Broken, // or too large
        Unread, // says nothing of the picture: the disk refused, or there is no reader
    };
    Outcome outcome = Outcome::Unread;
    QImage image {}; // turned as it is to be seen, in sRGB
    QSize size {}; // of the picture itself, turned as well
    bool mayMove = false; // of a kind in which there can be more pictures
};

// Of an open regular file. The image is at most as large as `bound` (empty: as the picture, up to
// MostPixels), and never larger than the picture. Any thread but the main one.
LoadedPicture decodedPicture(int descriptor, const QSize &bound);
// The same of one that is for the confined reader, which may be missing. On the reader's thread.
LoadedPicture decodedByReader(int descriptor, const QSize &bound, ForeignFiles *reader);

inline constexpr qint64 MostPixels = 40 * 1024 * 1024; // kept of one picture
