#pragma once

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

// Pictures as files, of which a test can tell whether and how they are shown.
namespace TestPictures {

using namespace Qt::StringLiterals;

inline QImage plain(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

// Red on the left, blue on the right.
inline QImage halves(const QSize &size)
{
    QImage image = plain(size, Qt::red);
    QPainter(&image).fillRect(size.width() / 2, 0, size.width(), size.height(), Qt::blue);
    return image;
}

inline QByteArray encoded(const QImage &image, const char *format, bool progressive = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(95);
    writer.setProgressiveScanWrite(progressive);
    return writer.write(image) ? bytes : QByteArray();
}

// With what a camera notes of how it was held (TIFF 6.0, tag 0x0112).
inline QByteArray held(const QByteArray &jpeg, char orientation)
{
    QByteArray note("\xff\xe1\x00\x22"
                    "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x01\0\0\0\0\0\0\0",
                    36);
    note[28] = orientation;
    return jpeg.left(2) + note + jpeg.mid(2);
}

// One point, that is red and then blue, and again.
inline QByteArray blinking()
{
    return QByteArray::fromHex("474946383961010001008000 00ff0000 0000ff"
                               "21ff0b4e45545343415045322e300301000000"
                               "21f904000200000 0 2c00000000010001000002024401 00"
                               "21f904000200000 0 2c00000000010001000002024c01 00 3b");
}

} // namespace TestPictures
