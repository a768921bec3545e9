#pragma once

#include "platform/MetadataIndex.h"

#include <QByteArray>

#include <vector>

// The different words of a document, folded, as the full-text indexes take them: one blank between
// two. Its memory is used again for the next one. One thread.
class DocumentWords final {
public:
    // Shown until the next call.
    QByteArrayView ofText(QByteArrayView utf8);
    QByteArrayView ofAttributes(const QList<MetadataAttribute> &attributes);

private:
    void begin();
    void add(QByteArrayView utf8);
    void addFolded(QByteArrayView utf8);
    void insert(QByteArrayView word);
    void grow();

    // A word in `_words`, and its hash, of a document; an open table of a power of two.
    struct Slot {
        quint32 document = 0; // another than the present one: it is free
        quint32 hash = 0;
        quint32 start = 0;
        quint32 size = 0;
    };
    std::vector<Slot> _slots;
    quint32 _document = 0;
    size_t _used = 0;
    QByteArray _words;
    QByteArray _folded;
};
