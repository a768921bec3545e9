#pragma once

#include "reader/FileBytes.h"
#include "tests/support/TestFolder.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include <archive.h>
#include <archive_entry.h>
#include <exiv2/exiv2.hpp>
#include <fcntl.h>
#include <functional>
#include <libheif/heif.h>

// Small files of the kinds that the reader knows, as their own programs write them.
namespace Samples {

inline Descriptor opened(const TestFolder &folder, const QString &name)
{
    return Descriptor(open(folder.bytes(name).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

struct Member {
    QByteArray name;
    QByteArray content;
};

inline QByteArray zip(const QList<Member> &members)
{
    QByteArray bytes(64 << 10, '\0');
    for (const Member &member : members)
        bytes.append(member.content.size(), '\0');
    size_t used = 0;
    archive *const writer = archive_write_new();
    archive_write_set_format_zip(writer);
    archive_write_set_format_option(writer, "zip", "compression-level", "1");
    archive_write_set_bytes_in_last_block(writer, 1);
    archive_write_open_memory(writer, bytes.data(), size_t(bytes.size()), &used);
    for (const Member &member : members) {
        archive_entry *const entry = archive_entry_new();
        archive_entry_set_pathname(entry, member.name);
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_size(entry, member.content.size());
        archive_write_header(writer, entry);
        archive_write_data(writer, member.content.constData(), size_t(member.content.size()));
        archive_entry_free(entry);
    }
    archive_write_free(writer);
    return bytes.first(qsizetype(used));
}

// Its objects from the first on; the first is the catalogue, the last what it says of itself.
inline QByteArray pdf(const QList<QByteArray> &objects)
{
    QByteArray bytes("%PDF-1.4\n");
    QByteArray places("0000000000 65535 f \n");
    for (qsizetype number = 1; number <= objects.size(); ++number) {
        places += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes += QByteArray::number(number) + " 0 obj\n" + objects[number - 1] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    return bytes + "xref\n0 " + count + '\n' + places + "trailer << /Size " + count
        + " /Root 1 0 R /Info " + QByteArray::number(objects.size()) + " 0 R >>\nstartxref\n"
        + QByteArray::number(bytes.size()) + "\n%%EOF\n";
}

inline QByteArray pdf(const QByteArray &words)
{
    const QByteArray drawing = "BT /F1 12 Tf 72 700 Td (" + words + ") Tj ET";
    return pdf({ "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                 "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 600 800] /Contents 4 0 R"
                 " /Resources << /Font << /F1 5 0 R >> >> >>",
                 "<< /Length " + QByteArray::number(drawing.size()) + " >>\nstream\n" + drawing
                     + "\nendstream",
                 "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
                 "<< /Title (A plan) /Author (Ann Other) /Keywords (one, two)"
                 " /CreationDate (D:20200102030405Z) >>" });
}

inline QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

// Red on the left, blue on the right.
inline QImage twoColors(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    for (int y = 0; y < height; ++y)
        std::fill_n(reinterpret_cast<QRgb *>(image.scanLine(y)), width / 2, qRgb(255, 0, 0));
    return image;
}

inline QByteArray jpeg(const QImage &image, const std::function<void(Exiv2::Image &)> &tag)
{
    const QByteArray bytes = encoded(image, "jpeg");
    const auto tagged = Exiv2::ImageFactory::open(
        reinterpret_cast<const Exiv2::byte *>(bytes.constData()), long(bytes.size()));
    tagged->readMetadata();
    tag(*tagged);
    tagged->writeMetadata();
    Exiv2::BasicIo &io = tagged->io();
    io.open();
    const Exiv2::DataBuf all = io.read(long(io.size()));
    return { reinterpret_cast<const char *>(all.pData_), qsizetype(all.size_) };
}

inline QByteArray heif(const QImage &image, heif_compression_format format)
{
    const QImage source = image.convertToFormat(QImage::Format_RGB888);
    heif_image *pixels = nullptr;
    heif_image_create(source.width(), source.height(), heif_colorspace_RGB,
                      heif_chroma_interleaved_RGB, &pixels);
    heif_image_add_plane(pixels, heif_channel_interleaved, source.width(), source.height(), 8);
    int row = 0;
    uint8_t *const to = heif_image_get_plane(pixels, heif_channel_interleaved, &row);
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(to + qsizetype(row) * y, source.constScanLine(y), size_t(source.width()) * 3);
    heif_context *const context = heif_context_alloc();
    heif_encoder *encoder = nullptr;
    heif_context_get_encoder_for_format(context, format, &encoder);
    heif_context_encode_image(context, pixels, encoder, nullptr, nullptr);
    QByteArray bytes;
    heif_writer writer { 1, [](heif_context *, const void *data, size_t size, void *all) {
                            static_cast<QByteArray *>(all)->append(static_cast<const char *>(data),
                                                                   qsizetype(size));
                            return heif_error { heif_error_Ok, heif_suberror_Unspecified, "" };
                        } };
    heif_context_write(context, &writer, &bytes);
    heif_encoder_release(encoder);
    heif_image_release(pixels);
    heif_context_free(context);
    return bytes;
}

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline QByteArray chunk(const QByteArray &name, const QByteArray &content)
{
    return name + little(quint32(content.size())) + content + QByteArray(content.size() % 2, '\0');
}

// Half a second of silence, 8000 samples a second of two channels of eight bits.
inline QByteArray wave()
{
    return chunk("RIFF",
                 "WAVE"
                     + chunk("fmt ",
                             little(quint16(1)) + little(quint16(2)) + little(quint32(8000))
                                 + little(quint32(16000)) + little(quint16(2)) + little(quint16(8)))
                     + chunk("data", QByteArray(8000, '\x80'))
                     + chunk("LIST", "INFO" + chunk("INAM", "A song") + chunk("IART", "A singer")));
}

// Sound that has but a tag, with one value.
inline QByteArray id3(const QByteArray &frame, const QByteArray &utf8)
{
    const auto size = [](qsizetype bytes) {
        QByteArray seven;
        for (int shift = 21; shift >= 0; shift -= 7)
            seven += char((bytes >> shift) & 0x7F);
        return seven;
    };
    const QByteArray tag = frame + size(utf8.size() + 1) + QByteArray(2, '\0') + '\3' + utf8;
    return QByteArray("ID3\4\0\0", 6) + size(tag.size()) + tag;
}

} // namespace Samples
