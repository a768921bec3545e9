#pragma once

#include "platform/MetadataIndex.h"

#include <QByteArray>
#include <QStringView>

// The two large columns of a document, there and back. What is damaged is read as empty. Any
// thread.
namespace StoredDocument {

// Names, types and order are kept; texts become well-formed UTF-8 without NUL.
QByteArray attributes(const QList<MetadataAttribute> &attributes);
QList<MetadataAttribute> attributesOf(QByteArrayView stored);

QByteArray text(QByteArrayView utf8);
// `utf8` is replaced; its memory is used again.
void textOf(QByteArrayView stored, QByteArray &utf8);

} // namespace StoredDocument
