#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QSize>

#include <memory>

struct heif_context;
struct heif_image_handle;

// The main picture of a HEIF or AVIF file. The bytes must stay as long as this lives.
class HeifPicture final {
public:
    explicit HeifPicture(QByteArrayView bytes);
    ~HeifPicture();

    QSize size() const; // turned as it is to be seen; empty when there is no picture
    QByteArray tags() const; // EXIF, from its TIFF header on; empty when there are none
    QImage decoded(const QSize &bound) const; // not larger than that; null when it is broken

private:
    std::unique_ptr<heif_context, void (*)(heif_context *)> _context;
    std::unique_ptr<heif_image_handle, void (*)(const heif_image_handle *)> _picture;
};
