#pragma once

#include "pictures/PictureWorkers.h"
#include "pictures/Thumbnails.h"

class ForeignFiles;

// Makes the pictures that are wanted now, beside the window: small ones for what is seen of a list,
// and large ones. Each is answered once, in whatever order they are done; one that does not come is
// answered as not read, and once more should it come after all. Main thread.
class PictureLoader final : public QObject {
    Q_OBJECT

public:
    struct Wish {
        quint64 id; // the caller's
        QString path;
    };
    // `reader`: for pictures of foreign kinds; may be missing, else it is asked by this one only.
    PictureLoader(ThumbnailCache cache, ForeignFiles *reader);

    // Each call says all that is wanted, the most urgent first.
    void wantThumbnails(const QList<Wish> &wishes, const QSize &bound);
    void wantPictures(const QList<Wish> &wishes, const QSize &bound); // empty: as large as they are
    void forget();

    bool end(QDeadlineTimer deadline); // see PictureWorkers

Q_SIGNALS:
    void thumbnailArrived(quint64 id, const LoadedPicture &picture);
    void pictureArrived(quint64 id, const QSize &bound, const LoadedPicture &picture);

private:
    enum class Kind { Thumbnail, Picture };
    struct Wanted { // of one kind
        Kind kind;
        PictureWorkers workers;
        QSize bound {};
        QList<Wish> wishes {};
        QList<quint64> forReader {}; // of these
    };

    void want(Wanted &wanted, const QList<Wish> &wishes, const QSize &bound);
    void wantFromReader();
    PictureWorkers::Job job(Wanted &wanted, const Wish &wish,
                            std::function<LoadedPicture()> decode);
    void take(Wanted &wanted, const Wish &wish, const QSize &bound, const LoadedPicture &picture);

    const std::shared_ptr<const Thumbnails> _thumbnails; // the threads', too
    ForeignFiles *foreignFiles; // not owned
    Wanted _small;
    Wanted _large;
    PictureWorkers _readers; // the one thread that asks the reader
};
