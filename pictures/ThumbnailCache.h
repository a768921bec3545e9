#pragma once

#include "files/FileStatus.h"

#include <QImage>
#include <QSize>

// The small pictures that all programs of the desktop share, by the Thumbnail Managing Standard of
// freedesktop.org (0.9): one PNG for each size of each file, named for the MD5 of the file's
// address, which tells in its texts which file it is of and when that was changed. What lies in
// there is another program's work, and is looked at as such. Any thread.
class ThumbnailCache final {
public:
    // What it is of: the file's normalized path, and its status as it was when it was opened.
    struct Original {
        QString path;
        FileStatus status;
    };
    struct Thumbnail {
        QImage image;
        QSize size {}; // of the picture itself; empty where nobody has noted it
    };
    // The folders of sizes, and how large what lies in each may be.
    enum class Size { Normal = 128, Large = 256, ExtraLarge = 512, ExtraExtraLarge = 1024 };
    static int side(Size size) { return int(size); }

    ThumbnailCache(); // the desktop's, in cacheFolder()
    explicit ThumbnailCache(QString folder);

    // A valid one that is made for this size, or for a larger one.
    std::optional<Thumbnail> find(const Original &original, Size least) const;
    // Whether this program could not make one of just that file.
    bool isKnownToFail(const Original &original) const;
    // `thumbnail` fits in the size. That it cannot be kept is nobody's concern.
    void store(const Original &original, Size size, const Thumbnail &thumbnail) const;
    void storeFailure(const Original &original) const;
    // Whether the file is a thumbnail itself, of which none are made.
    bool holds(const QString &path) const;

    static QByteArray addressOf(const QString &path); // file: URL, as others write it
    static QByteArray nameFor(const QByteArray &address);

private:
    std::optional<QImage> read(const QByteArray &file, const Original &original, int most) const;
    void write(const QString &folder, const Original &original, QImage image) const;

    const QString _folder;
};
