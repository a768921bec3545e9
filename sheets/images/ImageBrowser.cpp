#include "sheets/images/ImageBrowser.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/Launching.h"
#include "pictures/MovingPicture.h"
#include "platform/OpenDialogs.h"
#include "platform/OpenPanel.h"
#include "settings/DateText.h"
#include "sheets/images/ImageBrowserSheet.h"
#include "sheets/images/ImageTable.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"

#include <QButtonGroup>
#include <QCheckBox>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds Settling { 120 };

} // namespace

ImageBrowser::ImageBrowser(const FileQueries &fileQueries, const DateText &dateText,
                           Launching &launcher, const FileKinds &fileKinds,
                           const Services &services, QWidget *window)
    : queries(fileQueries)
    , dates(dateText)
    , launching(launcher)
    , kinds(fileKinds)
    , _services(services)
    , mainWindow(window)
    , imageFileTypes(std::make_shared<const ImageFileTypes>())
    , _loader(ThumbnailCache(), services.foreignFiles)
{
    connect(&_loader, &PictureLoader::thumbnailArrived, this, &ImageBrowser::takeThumbnail);
    connect(&_loader, &PictureLoader::pictureArrived, this, &ImageBrowser::takePicture);
    _boundSettled.setSingleShot(true);
    _boundSettled.setInterval(Settling);
    _boundSettled.callOnTimeout(this, &ImageBrowser::wantPicture);
}

ImageBrowser::~ImageBrowser() = default;

void ImageBrowser::showImageBrowserSheet(const QString &folder)
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    ImageBrowserSheet sheet(rows, mainWindow);
    imageBrowserSheet = &sheet;
    connectSheet();
    setupPaths(folder.isEmpty() ? PathText::homeFolder() : folder);
    sheet.run();
    reset(); // by whatever it is closed
    imageBrowserSheet.clear();
}

void ImageBrowser::connectSheet()
{
    ImageBrowserSheet &sheet = *imageBrowserSheet;
    sheet.scaling->button(int(_scaling))->setChecked(true);
    sheet.animates->setChecked(_animates);
    sheet.imageView->setScaling(_scaling);
    connect(&sheet, &ImageBrowserSheet::openAsked, this, &ImageBrowser::openPath);
    connect(&sheet, &ImageBrowserSheet::closeAsked, this, &ImageBrowser::closeImageBrowserSheet);
    connect(sheet.scaling, &QButtonGroup::idClicked, this, &ImageBrowser::setScaling);
    connect(sheet.animates, &QCheckBox::toggled, this, &ImageBrowser::setAnimates);
    connect(sheet.tableView, &ImageTable::seenRowsChanged, this, &ImageBrowser::wantThumbnails);
    connect(sheet.tableView, &ImageTable::selectionDidChange, this, [this] {
        if (const int row = imageBrowserSheet->tableView->selectedRow(); row >= 0)
            viewImage(row);
    });
    connect(sheet.tableView, &ImageTable::openAsked, this,
            [this](int row) { launching.openFiles({ rows.path(row) }, {}); });
    connect(sheet.imageView, &PictureView::boundChanged, &_boundSettled,
            qOverload<>(&QTimer::start));
}

void ImageBrowser::closeImageBrowserSheet()
{
    reset();
    if (imageBrowserSheet)
        imageBrowserSheet->accept();
}

void ImageBrowser::openPath()
{
    // The panel looks at where it starts before it shows itself: that must be there to answer.
    const QString start = queries.isDirectory(curPath) ? curPath : PathText::homeFolder();
    const auto chosen = _services.openPanel.chooseFolder(start);
    if (chosen && imageBrowserSheet)
        setupPaths(*chosen);
}

void ImageBrowser::setScaling(int choice)
{
    _scaling = static_cast<ImageScaling>(choice);
    if (imageBrowserSheet)
        imageBrowserSheet->imageView->setScaling(_scaling);
}

void ImageBrowser::setAnimates(bool animates)
{
    _animates = animates;
    play();
}

void ImageBrowser::reset()
{
    _listings.drop();
    _loader.forget();
    rows.clear();
    clearPicture();
}

void ImageBrowser::clearPicture()
{
    _boundSettled.stop();
    _movie.reset();
    _row = -1;
    _shown.reset();
    _next.reset();
    if (!imageBrowserSheet)
        return;
    imageBrowserSheet->imageView->showMessage({});
    for (ElidedLabel *text : { imageBrowserSheet->imageName, imageBrowserSheet->imageDimensions,
                               imageBrowserSheet->imageSize, imageBrowserSheet->imageDate })
        text->clear();
}

void ImageBrowser::setupPaths(const QString &folder)
{
    const bool wasListing = _listings.anyWanted();
    reset();
    curPath = folder;
    if (!imageBrowserSheet)
        return;
    if (!wasListing)
        imageBrowserSheet->progressIndicator->start();
    const QString shown = FileName::shown(queries.getLocalizedPath(folder));
    imageBrowserSheet->currentPath->setText(shown);
    imageBrowserSheet->currentPath->setToolTip(plainToolTip(shown));
    _listings.start([folder, all = &kinds,
                     types = imageFileTypes] { return FolderImages::read(folder, *all, *types); },
                    [this](const FolderImages &images) { _setupPaths(images); });
}

// What the reading found is shown.
void ImageBrowser::_setupPaths(const FolderImages &images)
{
    rows.setImages(images);
    clearPicture();
    if (!imageBrowserSheet)
        return;
    imageBrowserSheet->progressIndicator->stop();
    if (const auto error = rows.error())
        imageBrowserSheet->imageView->showMessage(
            filled(localized("This folder cannot be read: %@"),
                   QString::fromLocal8Bit(error.message().c_str())));
    else if (rows.rowCount() == 0)
        imageBrowserSheet->imageView->showMessage(localized("There are no images in this folder."));
    else
        imageBrowserSheet->imageView->showMessage(localized("Select an image in the list."));
}

void ImageBrowser::wantThumbnails()
{
    const ImageTable &table = *imageBrowserSheet->tableView;
    QList<PictureLoader::Wish> wishes;
    const auto nearby = table.rowsNearby();
    for (const int row : nearby)
        if (rows.thumbnail(row).state == ImageRows::State::Missing)
            wishes.append({ rows.idOf(row), rows.path(row) });
    _loader.wantThumbnails(wishes, table.thumbnailBound() * table.devicePixelRatioF());
}

void ImageBrowser::takeThumbnail(quint64 id, const LoadedPicture &picture)
{
    const int row = rows.rowOf(id);
    if (row < 0 || !imageBrowserSheet)
        return;
    const ImageTable &table = *imageBrowserSheet->tableView;
    rows.setThumbnail(row, picture, table.thumbnailBound(), table.devicePixelRatioF());
}

int ImageBrowser::neighbor() const
{
    const int row = _row + _step;
    return row >= 0 && row < rows.rowCount() ? row : -1;
}

void ImageBrowser::viewImage(int row)
{
    if (!imageBrowserSheet || row == _row)
        return;
    ImageBrowserSheet &sheet = *imageBrowserSheet;
    const Entry image = rows.image(row);
    _step = row < _row ? -1 : 1;
    _row = row;
    _movie.reset();
    _shown.reset();
    sheet.imageName->setText(FileName::shown(image.name()));
    sheet.imageName->setToolTip(plainToolTip(FileName::shown(image.name())));
    sheet.imageSize->setText(image.size());
    sheet.imageDate->setText(dates.getLocalizedShortDateAndTime(image.date()));
    sheet.imageDimensions->clear();
    wantPicture();
    if (_shown)
        return;
    // Until it is there, the small one stands for it: so nothing flickers on the way through them.
    const ImageRows::Thumbnail thumbnail = rows.thumbnail(row);
    const QSize room = sheet.imageView->bound();
    const QSize size = !thumbnail.pictureSize.isEmpty() ? thumbnail.pictureSize
        : room.isEmpty()                                ? QSize()
                         : thumbnail.picture.size().scaled(room, Qt::KeepAspectRatio);
    if (thumbnail.state == ImageRows::State::Shown && !size.isEmpty())
        sheet.imageView->showPicture(thumbnail.picture, size);
    else
        sheet.imageView->showMessage({});
}

// The chosen one, and the next one on the way.
void ImageBrowser::wantPicture()
{
    _boundSettled.stop();
    if (_row < 0 || !imageBrowserSheet)
        return;
    const QSize bound = imageBrowserSheet->imageView->bound();
    const quint64 id = rows.idOf(_row);
    if (_next && _next->id == id && _next->bound == bound)
        takePicture(id, bound, std::exchange(_next, std::nullopt)->picture);
    QList<PictureLoader::Wish> wishes;
    if (!_shown || _shown->bound != bound)
        wishes.append({ id, rows.path(_row) });
    // As large as they are, two take too much.
    const int next = bound.isEmpty() ? -1 : neighbor();
    if (next >= 0 && !(_next && _next->id == rows.idOf(next) && _next->bound == bound))
        wishes.append({ rows.idOf(next), rows.path(next) });
    _loader.wantPictures(wishes, bound);
}

void ImageBrowser::takePicture(quint64 id, const QSize &bound, const LoadedPicture &picture)
{
    if (!imageBrowserSheet || bound != imageBrowserSheet->imageView->bound())
        return;
    const int row = rows.rowOf(id);
    if (row >= 0 && row == neighbor())
        _next = { id, bound, picture };
    if (row < 0 || row != _row)
        return;
    _shown = { id, bound, picture };
    if (picture.outcome != LoadedPicture::Outcome::Decoded)
        return showBroken();
    showPicture(picture);
    if (picture.mayMove)
        play();
}

void ImageBrowser::showBroken()
{
    imageBrowserSheet->imageDimensions->clear();
    imageBrowserSheet->imageView->showMessage(localized("This picture cannot be shown."),
                                              themedIcon(u"image-broken"_s));
}

void ImageBrowser::showPicture(const LoadedPicture &picture)
{
    imageBrowserSheet->imageDimensions->setText(QString::asprintf(
        "%.0f x %.0f", double(picture.size.width()), double(picture.size.height())));
    imageBrowserSheet->imageView->showPicture(QPixmap::fromImage(picture.image), picture.size);
}

void ImageBrowser::play()
{
    if (_movie)
        return _movie->setPlaying(_animates);
    if (!_animates || !_shown || !_shown->picture.mayMove || !imageBrowserSheet)
        return;
    _movie = std::make_unique<MovingPicture>(rows.path(_row), _shown->bound);
    connect(_movie.get(), &MovingPicture::frameChanged, this, [this](const QImage &frame) {
        if (imageBrowserSheet && _shown)
            imageBrowserSheet->imageView->showPicture(QPixmap::fromImage(frame),
                                                      _shown->picture.size);
    });
    _movie->setPlaying(true);
}

bool ImageBrowser::end(QDeadlineTimer deadline)
{
    _movie.reset();
    const bool listingEnded = _listings.end(deadline);
    return _loader.end(deadline) && listingEnded && !MovingPicture::anyUnderWay();
}
