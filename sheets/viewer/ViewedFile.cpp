#include "sheets/viewer/ViewedFile.h"

#include "files/PathText.h"
#include "pictures/PictureKind.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Looked = 16 << 10; // bytes, to see what it is
constexpr int FirstLines = 100; // more than there is room for

// What the decoders take. Drawings are texts as well, and so is much that begins as one does: of
// those the name decides.
bool isPicture(QByteArrayView start, bool isText, const QString &path)
{
    const PictureKind kind =
        PictureKind::of(start.first(std::min(start.size(), qsizetype(PictureKind::StartLength))));
    const QString extension = PathText::extension(path).toLower();
    if (!kind.format.isEmpty())
        return !isText;
    constexpr const char *drawn[] = { "svg", "svgz" };
    constexpr const char *others[] = { "heic", "heif", "avif", "tif", "tiff", "ico", "tga" };
    const auto isNamed = [&](auto &names) {
        return std::ranges::any_of(
            names, [&](const char *name) { return extension == QLatin1String(name); });
    };
    return isNamed(drawn) || (!isText && isNamed(others));
}

} // namespace

ViewedFile ViewedFile::open(const QString &path) // worker thread
{
    ViewedFile viewed { FileBytes::open(path) };
    if (!viewed.opened.file)
        return viewed;
    const FileBytes &file = *viewed.opened.file;
    const QByteArray start = file.read(0, Looked);
    const auto encoding = TextEncoding::of(start, start.size() < Looked);
    if (isPicture(start, encoding.has_value(), path))
        viewed.mode = ViewMode::Picture;
    else if (!encoding)
        viewed.mode = ViewMode::Bytes;
    viewed.form.encoding = encoding.value_or(TextEncoding());
    viewed.form.end = TextLines::endIn(start, viewed.form.encoding);
    viewed.form.asBytes = viewed.mode == ViewMode::Bytes;
    viewed.firstPage = Stretch::read(file, viewed.form, 0, 0, FirstLines);
    return viewed;
}
