#include "search/StoredDocument.h"

#include <QCborArray>
#include <QCborValue>
#include <QDateTime>

#include <memory>
#include <zstd.h>

namespace {

// Faster than the disk both ways; higher levels gain little on text and cost much.
constexpr int Level = 1;
// More than any reader gives: what claims to be longer is damaged.
constexpr unsigned long long LongestText = 256ULL * 1024 * 1024; // bytes

struct Free {
    void operator()(ZSTD_CCtx *context) const { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx *context) const { ZSTD_freeDCtx(context); }
};

// Made once a thread, as its tables cost more than a short text.
ZSTD_CCtx *compressor()
{
    thread_local const std::unique_ptr<ZSTD_CCtx, Free> context(ZSTD_createCCtx());
    return context.get();
}

ZSTD_DCtx *decompressor()
{
    thread_local const std::unique_ptr<ZSTD_DCtx, Free> context(ZSTD_createDCtx());
    return context.get();
}

} // namespace

QByteArray StoredDocument::attributes(const QList<MetadataAttribute> &attributes)
{
    QCborArray pairs;
    for (const MetadataAttribute &attribute : attributes) {
        pairs.append(attribute.name);
        pairs.append(QCborValue::fromVariant(attribute.value));
    }
    return QCborValue(pairs).toCbor();
}

QList<MetadataAttribute> StoredDocument::attributesOf(QByteArrayView stored)
{
    const QCborArray pairs = QCborValue::fromCbor(stored.data(), stored.size()).toArray();
    QList<MetadataAttribute> attributes;
    for (qsizetype at = 0; at + 1 < pairs.size(); at += 2) {
        const QCborValue value = pairs.at(at + 1);
        QVariant variant = value.toVariant();
        if (value.isArray()) {
            QStringList texts;
            for (const QCborValue text : value.toArray())
                texts.append(text.toString());
            variant = texts;
        }
        attributes.append({ pairs.at(at).toString(), variant });
    }
    return attributes;
}

QByteArray StoredDocument::text(QByteArrayView utf8)
{
    QByteArray stored(qsizetype(ZSTD_compressBound(size_t(utf8.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compressCCtx(compressor(), stored.data(), size_t(stored.size()),
                                          utf8.data(), size_t(utf8.size()), Level);
    stored.resize(ZSTD_isError(size) ? 0 : qsizetype(size));
    return stored;
}

void StoredDocument::textOf(QByteArrayView stored, QByteArray &utf8)
{
    const unsigned long long size = ZSTD_getFrameContentSize(stored.data(), size_t(stored.size()));
    if (size == ZSTD_CONTENTSIZE_UNKNOWN || size == ZSTD_CONTENTSIZE_ERROR || size > LongestText) {
        utf8.resize(0);
        return;
    }
    utf8.resize(qsizetype(size));
    const size_t filled = ZSTD_decompressDCtx(decompressor(), utf8.data(), size_t(utf8.size()),
                                              stored.data(), size_t(stored.size()));
    utf8.resize(ZSTD_isError(filled) ? 0 : qsizetype(filled));
}
