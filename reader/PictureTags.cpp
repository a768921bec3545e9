#include "reader/PictureTags.h"

#include "reader/PlainText.h"

#include <QDateTime>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Tag {
    const char *key;
    QString name;
};

template <typename Key, typename Data>
const Exiv2::Value *valueOf(const Data &data, const char *key)
{
    const auto found = data.findKey(Key(key));
    return found == data.end() || found->count() == 0 ? nullptr : &found->value();
}

const Exiv2::Value *exifValue(const Exiv2::ExifData &exif, const char *key)
{
    return valueOf<Exiv2::ExifKey>(exif, key);
}

QString textOf(const Exiv2::Value &value)
{
    // The usual language of one that is told in several.
    if (const auto *languages = dynamic_cast<const Exiv2::LangAltValue *>(&value))
        return QString::fromStdString(languages->toString(0L));
    const std::string text = value.toString();
    return decodedText(QByteArray(text.data(), qsizetype(text.size())));
}

std::optional<double> numberOf(const Exiv2::Value *value, long at = 0)
{
    if (!value || at >= value->count())
        return std::nullopt;
    const Exiv2::Rational ratio = value->toRational(at);
    if (ratio.second == 0)
        return std::nullopt;
    return double(ratio.first) / double(ratio.second);
}

void addExifNumbers(const Exiv2::ExifData &exif, Findings &findings)
{
    for (const Tag &tag : { Tag { "Exif.Photo.ExposureTime", u"kMDItemExposureTimeSeconds"_s },
                            Tag { "Exif.Photo.FNumber", u"kMDItemFNumber"_s },
                            Tag { "Exif.Photo.FocalLength", u"kMDItemFocalLength"_s },
                            Tag { "Exif.Photo.FocalLengthIn35mmFilm", u"kMDItemFocalLength35mm"_s },
                            Tag { "Exif.Photo.MaxApertureValue", u"kMDItemMaxAperture"_s },
                            Tag { "Exif.Photo.ExposureBiasValue", u"kMDItemExposureBias"_s },
                            Tag { "Exif.Image.XResolution", u"kMDItemResolutionWidthDPI"_s },
                            Tag { "Exif.Image.YResolution", u"kMDItemResolutionHeightDPI"_s } }) {
        if (const auto number = numberOf(exifValue(exif, tag.key)))
            findings.add(tag.name, *number);
    }
    for (const Tag &tag : { Tag { "Exif.Photo.ISOSpeedRatings", u"kMDItemISOSpeed"_s },
                            Tag { "Exif.Photo.ExposureProgram", u"kMDItemExposureMode"_s },
                            Tag { "Exif.Photo.MeteringMode", u"kMDItemMeteringMode"_s },
                            Tag { "Exif.Photo.WhiteBalance", u"kMDItemWhiteBalance"_s } }) {
        if (const auto number = numberOf(exifValue(exif, tag.key)))
            findings.add(tag.name, qint64(*number));
    }
    if (const auto flash = numberOf(exifValue(exif, "Exif.Photo.Flash")))
        findings.add(u"kMDItemFlashOnOff"_s, qint64(*flash) & 1);
    // 0 lies, 1 stands. What is turned by a quarter stands.
    if (const auto turned = numberOf(exifValue(exif, "Exif.Image.Orientation")))
        findings.add(u"kMDItemOrientation"_s, qint64(*turned >= 5 && *turned <= 8));
}

// Degrees, minutes and seconds.
std::optional<double> degreesOf(const Exiv2::Value *value)
{
    constexpr double Sixty = 60;
    const auto degrees = numberOf(value, 0);
    if (!degrees)
        return std::nullopt;
    return *degrees + numberOf(value, 1).value_or(0) / Sixty
        + numberOf(value, 2).value_or(0) / (Sixty * Sixty);
}

void addPlace(const Exiv2::ExifData &exif, Findings &findings)
{
    const auto is = [&](const char *key, char letter) {
        const Exiv2::Value *const value = exifValue(exif, key);
        return value && value->toString().starts_with(letter);
    };
    const auto add = [&](const QString &name, std::optional<double> degrees, bool isNegative,
                         double most) {
        if (degrees && *degrees <= most)
            findings.add(name, isNegative ? -*degrees : *degrees);
    };
    add(u"kMDItemLatitude"_s, degreesOf(exifValue(exif, "Exif.GPSInfo.GPSLatitude")),
        is("Exif.GPSInfo.GPSLatitudeRef", 'S'), 90);
    add(u"kMDItemLongitude"_s, degreesOf(exifValue(exif, "Exif.GPSInfo.GPSLongitude")),
        is("Exif.GPSInfo.GPSLongitudeRef", 'W'), 180);
    if (const auto height = numberOf(exifValue(exif, "Exif.GPSInfo.GPSAltitude"))) {
        const auto below = numberOf(exifValue(exif, "Exif.GPSInfo.GPSAltitudeRef"));
        findings.add(u"kMDItemAltitude"_s, below == 1.0 ? -*height : *height);
    }
}

// Of the place where it was taken, if its zone is not told.
void addDate(const Exiv2::ExifData &exif, Findings &findings)
{
    for (const auto &[key, zoneKey] :
         { std::pair { "Exif.Photo.DateTimeOriginal", "Exif.Photo.OffsetTimeOriginal" },
           std::pair { "Exif.Photo.DateTimeDigitized", "Exif.Photo.OffsetTimeDigitized" },
           std::pair { "Exif.Image.DateTime", "Exif.Photo.OffsetTime" } }) {
        const Exiv2::Value *const value = exifValue(exif, key);
        if (!value)
            continue;
        QDateTime date = QDateTime::fromString(textOf(*value).trimmed(), u"yyyy:MM:dd HH:mm:ss"_s);
        const Exiv2::Value *const zone = exifValue(exif, zoneKey);
        const QString offset = zone ? textOf(*zone).trimmed() : QString();
        if (const QTime shift = QTime::fromString(offset.mid(1), u"HH:mm"_s); shift.isValid())
            date.setOffsetFromUtc(int(shift.msecsSinceStartOfDay() / 1000)
                                  * (offset.startsWith(u'-') ? -1 : 1));
        findings.add(u"kMDItemContentCreationDate"_s, date);
    }
}

template <typename Key, typename Data>
void addTexts(const Data &data, std::initializer_list<Tag> tags, Findings &findings)
{
    for (const Tag &tag : tags)
        if (const Exiv2::Value *const value = valueOf<Key>(data, tag.key))
            findings.add(tag.name, textOf(*value));
}

// Every value of a tag that may come several times, or holds several.
template <typename Data>
void addLists(const Data &data, std::initializer_list<Tag> tags, Findings &findings)
{
    for (const Tag &tag : tags) {
        for (const auto &datum : data) {
            if (datum.key() != tag.key)
                continue;
            const Exiv2::Value &value = datum.value();
            if (value.typeId() == Exiv2::xmpBag || value.typeId() == Exiv2::xmpSeq) {
                for (long at = 0; at < value.count(); ++at)
                    findings.addToList(tag.name, QString::fromStdString(value.toString(at)));
            } else {
                findings.addToList(tag.name, textOf(value));
            }
        }
    }
}

} // namespace

void addPictureTags(const Exiv2::ExifData &exif, const Exiv2::IptcData &iptc,
                    const Exiv2::XmpData &xmp, Findings &findings)
{
    addTexts<Exiv2::XmpKey>(xmp,
                            { { "Xmp.dc.title", u"kMDItemTitle"_s },
                              { "Xmp.dc.description", u"kMDItemDescription"_s },
                              { "Xmp.dc.rights", u"kMDItemCopyright"_s },
                              { "Xmp.photoshop.City", u"kMDItemCity"_s },
                              { "Xmp.photoshop.Country", u"kMDItemCountry"_s } },
                            findings);
    addTexts<Exiv2::IptcKey>(iptc,
                             { { "Iptc.Application2.ObjectName", u"kMDItemTitle"_s },
                               { "Iptc.Application2.Headline", u"kMDItemHeadline"_s },
                               { "Iptc.Application2.Caption", u"kMDItemDescription"_s },
                               { "Iptc.Application2.City", u"kMDItemCity"_s },
                               { "Iptc.Application2.CountryName", u"kMDItemCountry"_s } },
                             findings);
    addTexts<Exiv2::ExifKey>(exif,
                             { { "Exif.Image.Make", u"kMDItemAcquisitionMake"_s },
                               { "Exif.Image.Model", u"kMDItemAcquisitionModel"_s },
                               { "Exif.Photo.LensModel", u"kMDItemLensModel"_s },
                               { "Exif.Image.Software", u"kMDItemCreator"_s },
                               { "Exif.Image.ImageDescription", u"kMDItemDescription"_s },
                               { "Exif.Image.Copyright", u"kMDItemCopyright"_s } },
                             findings);
    addLists(
        xmp,
        { { "Xmp.dc.subject", u"kMDItemKeywords"_s }, { "Xmp.dc.creator", u"kMDItemAuthors"_s } },
        findings);
    addLists(iptc,
             { { "Iptc.Application2.Keywords", u"kMDItemKeywords"_s },
               { "Iptc.Application2.Byline", u"kMDItemAuthors"_s } },
             findings);
    addLists(exif, { { "Exif.Image.Artist", u"kMDItemAuthors"_s } }, findings);
    addExifNumbers(exif, findings);
    addPlace(exif, findings);
    addDate(exif, findings);
}
