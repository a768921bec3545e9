#include "reader/HeifPicture.h"

#include <QtEndian>

#include <libheif/heif.h>

HeifPicture::HeifPicture(QByteArrayView bytes)
    : _context(heif_context_alloc(), &heif_context_free)
    , _picture(nullptr, &heif_image_handle_release)
{
    constexpr int LongestSide = 16384; // pixels
    heif_context_set_maximum_image_size_limit(_context.get(), LongestSide);
    heif_context_set_max_decoding_threads(_context.get(), 0);
    const heif_error read = heif_context_read_from_memory_without_copy(
        _context.get(), bytes.data(), size_t(bytes.size()), nullptr);
    heif_image_handle *picture = nullptr;
    if (read.code == heif_error_Ok
        && heif_context_get_primary_image_handle(_context.get(), &picture).code == heif_error_Ok)
        _picture.reset(picture);
}

HeifPicture::~HeifPicture() = default;

QSize HeifPicture::size() const
{
    return _picture ? QSize(heif_image_handle_get_width(_picture.get()),
                            heif_image_handle_get_height(_picture.get()))
                    : QSize();
}

QByteArray HeifPicture::tags() const
{
    constexpr size_t Most = 4 << 20;
    constexpr qsizetype OffsetSize = 4; // of where the header lies behind it
    heif_item_id item = 0;
    if (!_picture
        || heif_image_handle_get_list_of_metadata_block_IDs(_picture.get(), "Exif", &item, 1) != 1)
        return {};
    const size_t size = heif_image_handle_get_metadata_size(_picture.get(), item);
    if (size <= OffsetSize || size > Most)
        return {};
    QByteArray block(qsizetype(size), Qt::Uninitialized);
    if (heif_image_handle_get_metadata(_picture.get(), item, block.data()).code != heif_error_Ok)
        return {};
    const auto start = qsizetype(qFromBigEndian<quint32>(block.constData()));
    return start < block.size() - OffsetSize ? block.mid(OffsetSize + start) : QByteArray();
}

QImage HeifPicture::decoded(const QSize &bound) const
{
    if (!_picture)
        return {};
    heif_image *decoded = nullptr;
    const heif_error error = heif_decode_image(_picture.get(), &decoded, heif_colorspace_RGB,
                                               heif_chroma_interleaved_RGBA, nullptr);
    const std::unique_ptr<heif_image, void (*)(const heif_image *)> image(decoded,
                                                                          &heif_image_release);
    int row = 0;
    const uint8_t *const pixels = error.code == heif_error_Ok
        ? heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &row)
        : nullptr;
    if (!pixels)
        return {};
    const QSize size(heif_image_get_width(image.get(), heif_channel_interleaved),
                     heif_image_get_height(image.get(), heif_channel_interleaved));
    const bool isPremultiplied = heif_image_handle_is_premultiplied_alpha(_picture.get()) != 0;
    const QImage whole(pixels, size.width(), size.height(), row,
                       isPremultiplied ? QImage::Format_RGBA8888_Premultiplied
                                       : QImage::Format_RGBA8888);
    if (size.width() <= bound.width() && size.height() <= bound.height())
        return whole.copy();
    return whole.scaled(size.scaled(bound, Qt::KeepAspectRatio).expandedTo({ 1, 1 }),
                        Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
