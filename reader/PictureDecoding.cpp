#include "reader/PictureDecoding.h"

#include "platform/ReaderWords.h"
#include "reader/HeifPicture.h"
#include "reader/Kinds.h"

#include <QBuffer>
#include <QImageReader>

namespace {

constexpr int Megabytes = 256; // that a decoder may take at once

// Not larger than it is.
QSize within(const QSize &size, const QSize &bound)
{
    if (size.width() <= bound.width() && size.height() <= bound.height())
        return size;
    return size.scaled(bound, Qt::KeepAspectRatio).expandedTo({ 1, 1 });
}

DecodedPicture decodedByPlugin(QByteArrayView bytes, const QSize &bound)
{
    QByteArray all = QByteArray::fromRawData(bytes.data(), bytes.size());
    QBuffer buffer(&all);
    QImageReader::setAllocationLimit(Megabytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QSize stored = reader.size();
    // Of a drawing that is all the pixels there are; others are asked for fewer where that is
    // less work.
    if (stored.isValid()) {
        const QSize wanted = within(stored, isTurned ? bound.transposed() : bound);
        if (wanted != stored)
            reader.setScaledSize(wanted);
    }
    DecodedPicture picture;
    picture.image = reader.read();
    picture.size = isTurned ? stored.transposed() : stored;
    if (picture.size.isEmpty())
        picture.size = picture.image.size();
    const QSize wanted = within(picture.image.size(), bound);
    if (wanted != picture.image.size())
        picture.image =
            picture.image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return picture;
}

} // namespace

DecodedPicture decodePicture(FileBytes &file, const QSize &asked)
{
    using ReaderWords::SideLimit;
    const QSize bound = asked.boundedTo({ SideLimit, SideLimit });
    const QByteArrayView bytes = file.mapped();
    if (bytes.isEmpty() || bound.isEmpty())
        return {};
    if (kindOf(bytes, {}) != Kind::HeifPicture)
        return decodedByPlugin(bytes, bound);
    const HeifPicture picture(bytes);
    return { picture.decoded(bound), picture.size() };
}
