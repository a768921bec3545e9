#pragma once

#include "files/Descriptor.h"
#include "pictures/PictureDecoding.h"
#include "pictures/ThumbnailCache.h"

// The small picture of a file, out of the shared cache or made and put there. Any thread but the
// main one.
class Thumbnails final {
public:
    explicit Thumbnails(ThumbnailCache cache)
        : _cache(std::move(cache))
    {
    }

    // At least as large as fits in `bound` where the picture is that large; `image` may be larger.
    LoadedPicture thumbnail(const QString &path, const QSize &bound) const;
    // The same of one that is for the confined reader, which may be missing. On its thread.
    LoadedPicture thumbnailByReader(const QString &path, const QSize &bound,
                                    ForeignFiles *reader) const;

    // The picture itself, at most as large as `bound`; empty: as large as it is.
    static LoadedPicture picture(const QString &path, const QSize &bound);
    static LoadedPicture pictureByReader(const QString &path, const QSize &bound,
                                         ForeignFiles *reader);

private:
    template <typename Decode>
    LoadedPicture make(const QString &path, ThumbnailCache::Size size, Decode decode) const;

    const ThumbnailCache _cache;
};

// Of the file that a path leads to, to be read; not open where there is none to be read. Never
// waits for a FIFO.
Descriptor openedPicture(const QString &path);
