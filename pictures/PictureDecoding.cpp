#include "pictures/PictureDecoding.h"

#include "pictures/DecodingTurn.h"
#include "platform/ForeignFiles.h"

#include <QColorSpace>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <unistd.h>

namespace {

using enum LoadedPicture::Outcome;

constexpr int AllocationLimit = 256; // MiB for one image
constexpr qint64 MostBytes = 512 * 1024 * 1024; // that a decoder may take beside it
constexpr qint64 LargeBytes = 24 * 1024 * 1024; // of which only one is decoded at a time
constexpr int BytesOfPixel = 4;
// A decoder of JPEG that gets its passes one after the other keeps them all.
constexpr int BytesOfProgressivePixel = 6;
constexpr int JpegParts = 8; // such a file can be decoded at this many smaller sizes
constexpr int RoughQuality = 49; // of 100: up to it the quick ways are taken

// What may be decoded here. Plugins that somebody installs can read more, and run programs for it
// or draw what a file tells them to.
bool isPlain(QByteArrayView format)
{
    static constexpr QByteArrayView plain[] = { "jpeg", "png", "gif",  "webp", "bmp", "tiff",
                                                "ico",  "cur", "icns", "tga",  "pbm", "pgm",
                                                "ppm",  "xbm", "xpm",  "wbmp" };
    return std::ranges::find(plain, format) != std::end(plain);
}

// Whether the passes of a JPEG each refine the whole picture.
bool isProgressive(QIODevice &file)
{
    const QByteArray bytes = file.peek(256 * 1024);
    for (qsizetype at = 2; at + 4 <= bytes.size() && uchar(bytes[at]) == 0xFF;) {
        const uchar marker = uchar(bytes[at + 1]);
        if (marker == 0xFF) { // filling
            ++at;
            continue;
        }
        const bool isFrame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame)
            return marker != 0xC0 && marker != 0xC1;
        at += 2 + qFromBigEndian<quint16>(bytes.constData() + at + 2);
    }
    return true; // as far as is known
}

qint64 bytesToDecode(const QByteArray &format, const QSize &size, QIODevice &file)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    if (format != "jpeg")
        return pixels * BytesOfPixel;
    return isProgressive(file) ? pixels * BytesOfProgressivePixel : 0;
}

QSize within(const QSize &size, const QSize &bound)
{
    if (size.width() <= bound.width() && size.height() <= bound.height())
        return size;
    return size.scaled(bound, Qt::KeepAspectRatio).expandedTo({ 1, 1 });
}

// The bound of the picture itself, at most as many pixels as may be kept of one.
QSize boundOf(const QSize &size, const QSize &wished)
{
    if (!wished.isEmpty())
        return wished;
    const double pixels = double(size.width()) * size.height();
    return pixels <= MostPixels ? size : size * std::sqrt(MostPixels / pixels);
}

// The smallest of the sizes that such a file can be decoded at which is not below that.
QSize jpegSize(const QSize &size, const QSize &least)
{
    for (int part = 1; part < JpegParts; ++part) {
        const QSize decoded((size.width() * part + JpegParts - 1) / JpegParts,
                            (size.height() * part + JpegParts - 1) / JpegParts);
        if (decoded.width() >= least.width() && decoded.height() >= least.height())
            return decoded;
    }
    return size;
}

QImage finished(QImage image, const QSize &bound)
{
    if (const QSize shown = within(image.size(), bound); shown != image.size())
        image = image.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QColorSpace sRgb(QColorSpace::SRgb);
    if (image.colorSpace().isValid() && image.colorSpace() != sRgb)
        image.convertToColorSpace(sRgb);
    // What goes on is what can be painted at once.
    const auto format =
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    if (image.format() != format)
        image = image.convertToFormat(format);
    return image;
}

LoadedPicture decodedHere(QFile &file, const PictureKind &kind, const QSize &wished)
{
    QByteArray format = kind.format;
    if (format.isEmpty())
        format = QImageReader::imageFormat(&file);
    if (format.isEmpty())
        return { Broken };
    if (!isPlain(format))
        return { Elsewhere };
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize size = isTurned ? stored.transposed() : stored;
    const qint64 bytes = stored.isEmpty() ? MostBytes : bytesToDecode(format, stored, file);
    if (bytes > MostBytes || (stored.isEmpty() && stored.isValid()))
        return { Broken };
    const QSize bound = stored.isEmpty() ? wished : boundOf(size, wished);
    if (format == "jpeg" && !stored.isEmpty()) {
        const QSize least = within(size, bound);
        const QSize decoded = jpegSize(stored, isTurned ? least.transposed() : least);
        if (decoded != stored) {
            reader.setScaledSize(decoded);
            reader.setQuality(RoughQuality); // it is scaled down from there
        }
    }
    const DecodingTurn turn(bytes > LargeBytes);
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return { file.error() == QFileDevice::NoError ? Broken : Unread };
    const QSize real = stored.isEmpty() ? image.size() : size;
    const QSize last = stored.isEmpty() ? boundOf(real, wished) : bound;
    return { Decoded, finished(std::move(image), last), real, kind.mayMove };
}

// The open file from its start on; it stays the caller's.
bool openAtStart(QFile &file, int descriptor)
{
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(AllocationLimit); });
    return ::lseek(descriptor, 0, SEEK_SET) == 0
        && file.open(descriptor, QIODevice::ReadOnly, QFileDevice::DontCloseHandle);
}

} // namespace

LoadedPicture decodedPicture(int descriptor, const QSize &bound)
{
    QFile file;
    if (!openAtStart(file, descriptor))
        return { Unread };
    const PictureKind kind = PictureKind::of(file.peek(PictureKind::StartLength));
    return kind.decoder == PictureKind::Decoder::Here ? decodedHere(file, kind, bound)
                                                      : LoadedPicture { Elsewhere };
}

LoadedPicture decodedByReader(int descriptor, const QSize &bound, ForeignFiles *reader)
{
    using enum ForeignFiles::Outcome;
    constexpr QSize Largest(4096, 4096); // of drawings, too, that have no pixels
    const QSize most = bound.isEmpty() ? Largest : bound;
    QImage image;
    QSize size;
    static std::mutex turn; // of one thread at a time, whichever loader it works for
    auto outcome = NoReader;
    if (const std::lock_guard lock(turn); reader)
        outcome = reader->picture(descriptor, most, image, size);
    if (outcome == Read && !image.isNull() && !size.isEmpty())
        return { Decoded, finished(std::move(image), most), size };
    if (outcome == Read || outcome == Failed)
        return { Broken };
    if (outcome == Late)
        return { Unread };
    // It knows nothing of such; or there is none, and those that are not weak are shown without.
    QFile file;
    if (!openAtStart(file, descriptor))
        return { Unread };
    const PictureKind kind = PictureKind::of(file.peek(PictureKind::StartLength));
    LoadedPicture decoded { Elsewhere };
    if (kind.decoder != PictureKind::Decoder::Elsewhere)
        decoded = decodedHere(file, kind, bound);
    if (decoded.outcome == Elsewhere)
        decoded.outcome = outcome == NoReader ? Unread : Broken;
    return decoded;
}
