#include "pictures/PictureKind.h"

#include <algorithm>

namespace {

// ISO base media files: "ftyp" and a brand. Also film and sound; the reader tells them apart.
bool isHeif(QByteArrayView start)
{
    return start.size() >= 12 && start.sliced(4, 4) == "ftyp";
}

// Drawn by what stands in it; packed where it starts as gzip does.
bool isVectors(QByteArrayView start)
{
    if (start.startsWith("\x1f\x8b"))
        return true;
    const QByteArray text = start.toByteArray().trimmed();
    return text.startsWith('<') || text.startsWith("\xef\xbb\xbf<") || text.contains("<svg");
}

} // namespace

PictureKind PictureKind::of(QByteArrayView start)
{
    using enum Decoder;
    if (start.startsWith("\xff\xd8\xff"))
        return { Here, "jpeg" };
    if (start.startsWith("\x89PNG\r\n\x1a\n"))
        return { Here, "png" };
    if (start.startsWith("GIF8"))
        return { Here, "gif", true };
    if (start.size() >= 12 && start.startsWith("RIFF") && start.sliced(8, 4) == "WEBP")
        return { Here, "webp", true };
    if (start.startsWith("BM"))
        return { Here, "bmp" };
    if (isHeif(start) || isVectors(start))
        return { Elsewhere };
    return {};
}
