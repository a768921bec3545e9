#include "sheets/images/ImageRows.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/MountTable.h"
#include "files/TypeCode.h"
#include "pictures/ImageFileTypes.h"
#include "widgets/MenuText.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

constexpr int KeptBytes = 24 * 1024 * 1024; // some screenfuls, however sharp the screen
constexpr int BytesOfPixel = 4;
constexpr int LeastCost = 256; // bytes, of one without a picture
constexpr int ChunkSize = 500; // rows, that a thread looks at

// Whether an item of the folder is to be listed, by its type code and its name.
class ImageTest {
public:
    ImageTest(const QString &folder, const ImageFileTypes &imageTypes, bool isThere)
        : types(imageTypes)
        , _folder(folder)
        , _start(isThere ? QByteArray() : FileName::toBytes(folder) + '/')
    {
    }
    bool operator()(const Entry &entry) const // any thread
    {
        if (entry.isFolder())
            return false;
        // Of what another machine would have to answer for, the name tells enough.
        const bool mayHang = entry.isLink() && _mounts.hasSlow()
            && _mounts.slowMountOnTheWay(_folder) != _mounts.slowMountOnTheWay(entry.path());
        return types.isImage(
            mayHang ? QByteArray()
                    : typeCodeOfFile(QByteArray(_start).append(entry.nameBytes()).constData()),
            entry.name());
    }

private:
    const ImageFileTypes &types;
    const QString _folder;
    const QByteArray _start; // of the paths
    const MountTable _mounts = MountTable::current();
};

} // namespace

FolderImages FolderImages::read(const QString &folder, const FileKinds &kinds,
                                const ImageFileTypes &types) // worker thread
{
    ListingOptions options;
    options.showHiddenFiles = false;
    FolderImages images {
        Listing::read(folder, options, kinds).sorted(Column::Name, SortDirection::Ascending)
    };
    std::vector<char> isImage(size_t(images.listing.size()), false);
    DirectoryReader place;
    const bool canWorkThere = !place.open(folder);
    std::atomic<int> nextChunk = 0;
    const auto look = [&] { // the threads share nothing that they write
        // Standing in the folder spares the system the way there for each name.
        const ImageTest test(folder, types, canWorkThere && place.workHere());
        const int size = int(images.listing.size());
        for (int from = 0; (from = nextChunk++ * ChunkSize) < size;)
            for (int row = std::max(from, 1); row < std::min(from + ChunkSize, size); ++row)
                isImage[size_t(row)] = test(images.listing[row]); // 0 is ".."
    };
    std::thread other;
    if (images.listing.size() > ChunkSize)
        other = std::thread(look);
    std::thread(look).join(); // not this one, which has to stay where it is
    if (other.joinable())
        other.join();
    for (int row = 1; row < images.listing.size(); ++row)
        if (isImage[size_t(row)])
            images.rows.append(row);
    return images;
}

QSizeF ImageRows::thumbnailSize(const QSize &picture)
{
    if (picture.isEmpty())
        return { ThumbnailHeight, ThumbnailHeight };
    const double ratio = double(picture.width()) / picture.height();
    return { ThumbnailHeight * ratio, ThumbnailHeight };
}

ImageRows::ImageRows(QObject *parent)
    : QAbstractTableModel(parent)
    , _thumbnails(KeptBytes)
{
}

void ImageRows::setImages(const FolderImages &images)
{
    beginResetModel();
    _thumbnails.clear();
    _images = images;
    endResetModel();
    Q_EMIT headerDataChanged(Qt::Horizontal, IconColumn, IconColumn);
}

ImageRows::Thumbnail ImageRows::thumbnail(int row) const
{
    const Thumbnail *known = _thumbnails.object(row);
    return known ? *known : Thumbnail();
}

// `bound`: the cell, in points.
void ImageRows::setThumbnail(int row, const LoadedPicture &picture, const QSize &bound,
                             double ratio)
{
    auto *thumbnail = new Thumbnail { State::Broken };
    if (picture.outcome == LoadedPicture::Outcome::Decoded) {
        const QSize real = picture.size.isEmpty() ? picture.image.size() : picture.size;
        const QSizeF wished = thumbnailSize(real);
        thumbnail->state = State::Shown;
        thumbnail->pictureSize = picture.size;
        thumbnail->size = wished.width() > bound.width()
            ? wished.scaled(bound, Qt::KeepAspectRatio).toSize().expandedTo({ 1, 1 })
            : wished.toSize().expandedTo({ 1, 1 });
        thumbnail->picture = QPixmap::fromImage(picture.image.scaled(
            thumbnail->size * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        thumbnail->picture.setDevicePixelRatio(ratio);
    }
    const QSize pixels = thumbnail->picture.size();
    _thumbnails.insert(row, thumbnail, LeastCost + pixels.width() * pixels.height() * BytesOfPixel);
    Q_EMIT dataChanged(index(row, IconColumn), index(row, IconColumn));
}

int ImageRows::rowOf(quint64 id) const
{
    const auto row = qint64(id & 0xFFFFFFFF);
    return row < _images.rows.size() && idOf(int(row)) == id ? int(row) : -1;
}

int ImageRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(_images.rows.size());
}

int ImageRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : NameColumn + 1;
}

QVariant ImageRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (index.column() == NameColumn && (role == Qt::DisplayRole || role == Qt::ToolTipRole)) {
        const QString name = FileName::shown(image(index.row()).name());
        return role == Qt::DisplayRole ? name : plainToolTip(name);
    }
    if (index.column() == IconColumn && role == Qt::AccessibleDescriptionRole
        && thumbnail(index.row()).state == State::Broken)
        return localized("This picture cannot be shown.");
    return {};
}

QVariant ImageRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    if (section == NameColumn)
        return localized("Name");
    return rowCount() == 0 ? localized("0 images") : filled(localized("%i images"), rowCount());
}
