#include "pictures/Thumbnails.h"

#include "files/FileName.h"
#include "files/SystemCalls.h"

#include <fcntl.h>

namespace {

using enum LoadedPicture::Outcome;
using Size = ThumbnailCache::Size;

Size sizeFor(const QSize &bound)
{
    const int side = std::max(bound.width(), bound.height());
    for (const Size size : { Size::Normal, Size::Large, Size::ExtraLarge })
        if (side <= ThumbnailCache::side(size))
            return size;
    return Size::ExtraExtraLarge;
}

} // namespace

Descriptor openedPicture(const QString &path)
{
    // What is no plain file may do something when it is opened.
    const auto there = fileStatus(path, Links::Follow);
    if (!there || there->kind != FileKind::Regular)
        return {};
    Descriptor file(SystemCalls::openat(AT_FDCWD, FileName::toBytes(path),
                                        O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    const auto status = file.isOpen() ? statusOf(file.number()) : std::nullopt;
    return status && status->kind == FileKind::Regular ? std::move(file) : Descriptor();
}

LoadedPicture Thumbnails::thumbnail(const QString &path, const QSize &bound) const
{
    const Size size = sizeFor(bound);
    const auto status = fileStatus(path, Links::Follow);
    if (status && status->kind == FileKind::Regular && !_cache.holds(path)) {
        if (const auto found = _cache.find({ path, *status }, size))
            return { Decoded, found->image, found->size };
        if (_cache.isKnownToFail({ path, *status }))
            return { Broken };
    }
    return make(path, size, [](int file, const QSize &most) { return decodedPicture(file, most); });
}

LoadedPicture Thumbnails::thumbnailByReader(const QString &path, const QSize &bound,
                                            ForeignFiles *reader) const
{
    return make(path, sizeFor(bound), [reader](int file, const QSize &most) {
        return decodedByReader(file, most, reader);
    });
}

LoadedPicture Thumbnails::picture(const QString &path, const QSize &bound)
{
    const Descriptor file = openedPicture(path);
    return file.isOpen() ? decodedPicture(file.number(), bound) : LoadedPicture {};
}

LoadedPicture Thumbnails::pictureByReader(const QString &path, const QSize &bound,
                                          ForeignFiles *reader)
{
    const Descriptor file = openedPicture(path);
    return file.isOpen() ? decodedByReader(file.number(), bound, reader) : LoadedPicture {};
}

template <typename Decode>
LoadedPicture Thumbnails::make(const QString &path, Size size, Decode decode) const
{
    const Descriptor file = openedPicture(path);
    const auto before = file.isOpen() ? statusOf(file.number()) : std::nullopt;
    if (!before)
        return { exists(path) ? Broken : Unread };
    const int side = ThumbnailCache::side(size);
    LoadedPicture decoded = decode(file.number(), QSize(side, side));
    const auto after = statusOf(file.number());
    if (_cache.holds(path) || !after || !isUnchanged(*before, *after))
        return decoded; // it is being written: the next one sees it whole
    if (decoded.outcome == Broken)
        _cache.storeFailure({ path, *before });
    else if (decoded.outcome == Decoded && decoded.image.size() != decoded.size)
        _cache.store({ path, *before }, size, { decoded.image, decoded.size });
    return decoded;
}
