#pragma once

#include "model/Listing.h"
#include "pictures/PictureDecoding.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QPixmap>

class ImageFileTypes;

// The pictures of a folder: rows of its listing, by name.
struct FolderImages {
    Listing listing;
    QList<int> rows {};

    // On a worker, as long as it takes.
    static FolderImages read(const QString &folder, const FileKinds &kinds,
                             const ImageFileTypes &types);
};

// The rows of the image browser's table. Of the small pictures only those are kept that were seen
// last. Main thread.
class ImageRows final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { IconColumn, NameColumn };
    enum class State { Missing, Shown, Broken };
    struct Thumbnail {
        State state = State::Missing;
        QPixmap picture {};
        QSize size {}; // in points: as high as all of them
        QSize pictureSize {}; // of the picture itself; empty where it is not known
    };
    static constexpr int ThumbnailHeight = 60; // points
    // So high, and as wide as the picture then is.
    static QSizeF thumbnailSize(const QSize &picture);

    explicit ImageRows(QObject *parent = nullptr);

    void setImages(const FolderImages &images);
    void clear() { setImages({}); }
    Entry image(int row) const { return _images.listing[_images.rows[row]]; }
    QString path(int row) const { return image(row).path(); }
    std::error_code error() const { return _images.listing.error(); }

    Thumbnail thumbnail(int row) const;
    void setThumbnail(int row, const LoadedPicture &picture, const QSize &bound, double ratio);
    // A name for the row that no row of another folder has.
    quint64 idOf(int row) const { return _images.listing.generation() << 32 | quint32(row); }
    int rowOf(quint64 id) const; // -1: of another folder

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    FolderImages _images;
    QCache<int, Thumbnail> _thumbnails; // by row; the cost is in bytes
};
