#include "reader/PictureProperties.h"

#include "reader/HeifPicture.h"
#include "reader/PictureTags.h"

#include <QBuffer>
#include <QImageReader>

#include <exiv2/exiv2.hpp>

using namespace Qt::StringLiterals;

namespace {

void addSize(const QSize &size, Findings &findings)
{
    findings.add(u"kMDItemPixelWidth"_s, qint64(size.width()));
    findings.add(u"kMDItemPixelHeight"_s, qint64(size.height()));
    findings.add(u"kMDItemPixelCount"_s, qint64(size.width()) * size.height());
}

// By the decoders themselves, of which some read no tags.
QSize decodersSize(QByteArrayView bytes)
{
    QByteArray all = QByteArray::fromRawData(bytes.data(), bytes.size());
    QBuffer buffer(&all);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.size();
}

// Of what it has tags: false where the tags' library does not know it.
bool readTagged(QByteArrayView bytes, QSize &size, Findings &findings)
{
    try {
        const auto image = Exiv2::ImageFactory::open(
            reinterpret_cast<const Exiv2::byte *>(bytes.data()), long(bytes.size()));
        image->readMetadata();
        addPictureTags(image->exifData(), image->iptcData(), image->xmpData(), findings);
        size = { image->pixelWidth(), image->pixelHeight() };
        return true;
    } catch (const Exiv2::AnyError &) {
        return false;
    }
}

} // namespace

bool readPicture(QByteArrayView bytes, Findings &findings)
{
    if (bytes.isEmpty())
        return false;
    QSize size;
    const bool isTagged = readTagged(bytes, size, findings);
    if (size.isEmpty())
        size = decodersSize(bytes);
    if (!size.isEmpty())
        addSize(size, findings);
    return isTagged || !size.isEmpty();
}

bool readHeifPicture(QByteArrayView bytes, Findings &findings)
{
    const HeifPicture picture(bytes);
    if (picture.size().isEmpty())
        return false;
    addSize(picture.size(), findings);
    if (const QByteArray tags = picture.tags(); !tags.isEmpty()) {
        try {
            Exiv2::ExifData data;
            Exiv2::ExifParser::decode(data, reinterpret_cast<const Exiv2::byte *>(tags.constData()),
                                      uint32_t(tags.size()));
            addPictureTags(data, {}, {}, findings);
        } catch (const Exiv2::AnyError &) {
            return true; // it is a picture all the same
        }
    }
    return true;
}
