#include "search/DocumentWriter.h"

#include "search/StoredDocument.h"

DocumentWriter::DocumentWriter(IndexWriter &index)
    : _index(index)
    , _inFolder(index.database(),
                "SELECT id, name, size, modified, changed, inode, outcome FROM document"
                " WHERE folder = ?")
    , _idsInFolder(index.database(), "SELECT id FROM document WHERE folder = ? LIMIT ?")
    , _at(index.database(), "SELECT id FROM document WHERE folder = ? AND name = ?")
    , _put(index.database(), "INSERT INTO document VALUES(NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
    , _remove(index.database(), "DELETE FROM document WHERE id = ?")
    , _stored(index.database(), "SELECT attributes, text FROM document WHERE id = ?")
    , _addProperties(index.database(), "INSERT INTO property_words(rowid, words) VALUES(?, ?)")
    , _addContent(index.database(), "INSERT INTO content_words(rowid, words) VALUES(?, ?)")
    , _removeProperties(index.database(),
                        "INSERT INTO property_words(property_words, rowid, words)"
                        " VALUES('delete', ?, ?)")
    , _removeContent(index.database(),
                     "INSERT INTO content_words(content_words, rowid, words)"
                     " VALUES('delete', ?, ?)")
{
}

QHash<QByteArray, DocumentWriter::Known> DocumentWriter::documentsIn(qint64 folder)
{
    QHash<QByteArray, Known> documents;
    _inFolder.bind(1, folder);
    while (_inFolder.next()) {
        documents.insert(_inFolder.bytes(1).toByteArray(),
                         { _inFolder.number(0),
                           { _inFolder.number(2), _inFolder.number(3), _inFolder.number(4),
                             quint64(_inFolder.number(5)) },
                           IndexFile::Outcome(_inFolder.number(6)) });
    }
    return documents;
}

void DocumentWriter::put(const Document &document)
{
    const qint64 generation = _index.generation();
    _at.bind(1, document.folder).bindBytes(2, document.name);
    const qint64 known = _at.next() ? _at.number(0) : 0;
    _at.reset();
    if (known != 0)
        remove(known);

    const QByteArray attributes = document.attributes.isEmpty()
        ? QByteArray()
        : StoredDocument::attributes(document.attributes);
    const QByteArray text =
        document.text.isEmpty() ? QByteArray() : StoredDocument::text(document.text);
    _put.bind(1, document.folder)
        .bindBytes(2, document.name)
        .bind(3, document.stamp.size)
        .bind(4, document.stamp.modified)
        .bind(5, document.stamp.changed)
        .bind(6, qint64(document.stamp.inode))
        .bind(7, qint64(document.outcome))
        .bind(8, generation)
        .bindBytes(9, attributes)
        .bindBytes(10, text)
        .run();
    const qint64 id = _index.database().lastId();
    // Of what is stored, so that the same words are found when they have to go.
    if (!attributes.isEmpty()) {
        const QByteArrayView words = _words.ofAttributes(StoredDocument::attributesOf(attributes));
        if (!words.isEmpty())
            _addProperties.bind(1, id).bindText(2, words).run();
    }
    if (!text.isEmpty()) {
        const QByteArrayView words = _words.ofText(document.text);
        if (!words.isEmpty())
            _addContent.bind(1, id).bindText(2, words).run();
    }
    _written += document.text.size();
}

void DocumentWriter::remove(qint64 id)
{
    _index.generation();
    removeWords(id);
    _remove.bind(1, id).run();
}

bool DocumentWriter::removeIn(qint64 folder, int most)
{
    QList<qint64> ids;
    _idsInFolder.bind(1, folder).bind(2, most);
    while (_idsInFolder.next())
        ids.append(_idsInFolder.number(0));
    for (const qint64 id : std::as_const(ids))
        remove(id);
    return ids.size() < most;
}

void DocumentWriter::removeWords(qint64 id)
{
    _stored.bind(1, id);
    if (!_stored.next())
        return;
    const QList<MetadataAttribute> attributes = StoredDocument::attributesOf(_stored.bytes(0));
    QByteArray text;
    if (!_stored.bytes(1).isEmpty())
        StoredDocument::textOf(_stored.bytes(1), text);
    _stored.reset();
    // The full-text indexes keep no texts: they have to be told the words that go.
    if (const QByteArrayView words = _words.ofAttributes(attributes); !words.isEmpty())
        _removeProperties.bind(1, id).bindText(2, words).run();
    if (const QByteArrayView words = _words.ofText(text); !words.isEmpty())
        _removeContent.bind(1, id).bindText(2, words).run();
}

qint64 DocumentWriter::takeWritten()
{
    return std::exchange(_written, 0);
}
