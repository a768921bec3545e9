#pragma once

#include "platform/ForeignFiles.h"

#include <QByteArray>

#include <optional>

// What ReaderProcess and the program twinleaf-reader say to each other. A question and an answer
// are one packet each; what an answer is about (attributes and text, or the pixels of a picture)
// lies in memory that the two share: first the attributes, then the text or the pixels. The reader
// may have been taken over by a hostile file: an answer is checked like the file itself.
namespace ReaderWords {

// Descriptors that the reader is started with, beside the standard three.
constexpr int SocketNumber = 3;
constexpr int MemoryNumber = 4;
constexpr int LifeNumber = 5; // a pipe that closes when the asking program ends

constexpr qsizetype MemorySize = qsizetype(256) << 20; // taken from the system only as it is filled
constexpr qsizetype AttributesLimit = qsizetype(4) << 20; // bytes, all together
constexpr qsizetype AttributeLimit = 32 << 10; // characters of one value
constexpr qsizetype AttributeCountLimit = 256;
constexpr qsizetype ListLimit = 1024; // values of one attribute
constexpr qsizetype TextLimit = qsizetype(16) << 20; // characters
constexpr qsizetype NameLimit = 255; // bytes, the last ones of a longer name
constexpr int SideLimit = 8192; // pixels of a picture's longer side, as it is handed over

enum class Work : quint32 { Read = 1, Picture };

struct Question { // then the bytes of the name; the file comes along as a descriptor
    quint32 number = 0;
    Work work = Work::Read;
    qint32 width = 0; // at most this large
    qint32 height = 0;
};

enum Closed : quint32 { // which doors the system let the reader close behind it
    CallsClosed = 1, // system calls
    PathsClosed = 2, // paths and the network, by what they are
};

struct Hello { // sent once, when no door is open any more
    quint32 magic = Magic;
    quint32 closed = 0; // of Closed
    // Another one whenever anything in here changes, while this struct keeps its size: the two may
    // be of different versions.
    static constexpr quint32 Magic = 0x54574c31;
};

struct Answer {
    quint32 number = 0;
    quint32 outcome = 0; // of ForeignFiles::Outcome, up to Failed
    quint32 attributesSize = 0; // bytes
    quint32 textSize = 0; // characters
    quint32 textWasCut = 0;
    qint32 width = 0; // of the picture itself
    qint32 height = 0;
    qint32 shownWidth = 0; // as it lies in the memory: ARGB32, premultiplied, without gaps
    qint32 shownHeight = 0;
};

// Whether it answers that question and stays inside the memory.
bool isAnswer(const Answer &answer, const Question &question);

// At most what the limits above allow; what is more is left out.
QByteArray bytesOf(const QList<MetadataAttribute> &attributes);
// Nothing when the bytes are not what bytesOf() writes.
std::optional<QList<MetadataAttribute>> attributesIn(QByteArrayView bytes);

} // namespace ReaderWords
