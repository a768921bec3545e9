#pragma once

#include <QByteArray>

// What a picture is and who may decode it, by its first bytes: those of a name can be anything.
// Decoders that have often been led astray by hostile files, or that draw what the file tells them
// to, work in the confined reader; the plain old ones work here, which is faster.
struct PictureKind {
    enum class Decoder {
        Here,
        Elsewhere, // ForeignFiles; and nowhere else
        ElsewhereFirst, // here only what is not read there
    };
    Decoder decoder = Decoder::ElsewhereFirst;
    QByteArray format {}; // as QImageReader names it; empty: by the content
    bool mayMove = false; // there can be more than one picture in it

    static constexpr qint64 StartLength = 4096; // bytes that are looked at
    static PictureKind of(QByteArrayView start);
};
