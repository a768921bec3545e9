#pragma once

#include <QByteArrayView>

// What kind of file it is, by its first bytes; by the end of its name only where these leave it
// open, as text does.
enum class Kind {
    Unknown, // nothing to read in it
    Pdf,
    Zip, // a document, perhaps
    Picture,
    HeifPicture,
    Sound, // video, too
    Html, // and what is written like it
    RichText,
    Mail,
    Text,
};

constexpr qsizetype KindBytes = 8192; // that many first bytes are looked at
Kind kindOf(QByteArrayView start, QByteArrayView name);
