#pragma once

#include "platform/ForeignFiles.h"
#include "search/DocumentWords.h"
#include "search/IndexWriter.h"

#include <QHash>

// Writes the documents of the index, in the transactions of the names. The same thread.
class DocumentWriter final {
public:
    explicit DocumentWriter(IndexWriter &index);

    struct Known {
        qint64 id = 0;
        PackedItem::Stamp stamp; // when it was read
        IndexFile::Outcome outcome = IndexFile::Outcome::Nothing;
    };
    QHash<QByteArray, Known> documentsIn(qint64 folder);

    struct Document {
        qint64 folder = 0;
        QByteArray name;
        PackedItem::Stamp stamp;
        IndexFile::Outcome outcome = IndexFile::Outcome::Nothing;
        QList<MetadataAttribute> attributes {};
        QByteArray text {}; // UTF-8
    };
    // In place of what is known of the item.
    void put(const Document &document);
    void remove(qint64 id);
    // The first so many of a folder; true when there are no more.
    bool removeIn(qint64 folder, int most);

    // Bytes of text since this was asked last.
    qint64 takeWritten();

private:
    void removeWords(qint64 id);

    IndexWriter &_index;
    DocumentWords _words;
    qint64 _written = 0;
    Statement _inFolder;
    Statement _idsInFolder;
    Statement _at;
    Statement _put;
    Statement _remove;
    Statement _stored;
    Statement _addProperties;
    Statement _addContent;
    Statement _removeProperties;
    Statement _removeContent;
};
