#pragma once

#include "platform/MetadataIndex.h"

#include <QImage>
#include <QSize>

#include <optional>

// What a file says of itself.
struct ForeignContents {
    QList<MetadataAttribute> attributes; // title, authors, pixel width, duration...
    QString text; // its words in reading order, as a person would see them
    bool textWasCut = false; // there is more than the limit
};

// Reads files that come from anywhere, by the program twinleaf-reader: a process without network
// and without write access, with a limit of time and memory for each file. It is started with the
// first question, and anew when a file has ended it. One thread at a time.
class ForeignFiles {
public:
    enum class Outcome {
        Read,
        Nothing, // of a kind in which there is nothing to read
        Failed, // broken, too large, too much work, or it ended the reader
        NoReader, // the program cannot be started: says nothing of the file
        Late, // the disk or the machine was too slow, or another ended it: nor does this
    };

    virtual ~ForeignFiles() = default;

    // Of the open file; the name tells its kind where the content does not.
    virtual Outcome read(int descriptor, const QString &name, ForeignContents &contents) = 0;
    // A picture of a kind that is not decoded in the program itself (HEIF, AVIF, SVG), turned as it
    // is to be seen, at most as large as `bound`; `size` gets that of the picture itself.
    virtual Outcome picture(int descriptor, const QSize &bound, QImage &image, QSize &size) = 0;
};
