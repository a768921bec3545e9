#include "pictures/ImageFileTypes.h"

#include "files/PathText.h"
#include "files/TypeCode.h"

#include <QImageReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Codes {
    const char *format; // as QImageReader names it
    QByteArrayList codes;
};

const Codes &codesAt(int index)
{
    static const Codes all[] = { { "jpeg", { "JPEG", "JPG " } }, { "png", { "PNGf", "PNG " } },
                                 { "gif", { "GIFf", "GIF " } },  { "tiff", { "TIFF", "TIF " } },
                                 { "bmp", { "BMPf", "BMP " } },  { "ico", { "ICO " } },
                                 { "icns", { "icns" } },         { "tga", { "TPIC" } },
                                 { "svg", { "svg " } },          { "", {} } };
    return all[index];
}

// Pages, which some plugin may draw.
bool isOfPages(QByteArrayView format)
{
    static constexpr QByteArrayView known[] = { "pdf", "ps", "eps", "epsf", "epsi", "xaml" };
    return std::ranges::find(known, format) != std::end(known);
}

// Codes of files that are something else.
bool isCodeOfOtherKind(QByteArrayView code)
{
    static constexpr QByteArrayView known[] = { "TEXT", "APPL", "PICT", "PDF ", "MOOV", "MPEG",
                                                "ZIP ", "HTML", "RTF ", "AIFF", "WAVE", "MIDI",
                                                "FNDR", "SIT5", "SITD", "EPSF" };
    return std::ranges::find(known, code) != std::end(known);
}

// As the codes look that stand for an application which states none (see ApplicationCodes): they
// say who opens the file, and nothing of what it is.
bool mayStandForApplication(QByteArrayView code)
{
    return !isCodeOfOtherKind(code) && std::ranges::all_of(code, [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '5');
    });
}

QString quoted(QByteArrayView code)
{
    return u'\'' + QString::fromLatin1(code) + u'\'';
}

} // namespace

ImageFileTypes::ImageFileTypes()
{
    const QByteArrayList formats = QImageReader::supportedImageFormats();
    for (const QByteArray &format : formats)
        if (!isOfPages(format))
            _types.append(QString::fromLatin1(format).toLower());
    for (int i = 0; !codesAt(i).codes.isEmpty(); ++i)
        if (formats.contains(codesAt(i).format))
            for (const QByteArray &code : codesAt(i).codes)
                _types.append(quoted(code));
    // By the reader of foreign files.
    _types += { u"heic"_s, u"heif"_s, u"hif"_s, u"avif"_s, u"svg"_s, u"svgz"_s };
    // Another ending of the same.
    if (formats.contains("jpeg"))
        _types += { u"jpe"_s, u"jfif"_s };
    _types.sort();
    _types.removeDuplicates();
}

bool ImageFileTypes::isFileImage(const QString &path) const
{
    return isImage(typeCodeOfFile(path), PathText::lastComponent(path));
}

bool ImageFileTypes::isImage(QByteArrayView code, const QString &name) const
{
    const auto isKnown = [this](const QString &type) {
        return std::ranges::binary_search(_types, type);
    };
    if (!code.isEmpty() && (isKnown(quoted(code)) || !mayStandForApplication(code)))
        return isKnown(quoted(code));
    return isKnown(PathText::extension(name).toLower());
}
