#include "sheets/images/ImageTable.h"

#include "sheets/images/ImageKeys.h"
#include "sheets/images/ImageRows.h"
#include "sheets/images/ThumbnailCell.h"
#include "widgets/TextFieldCell.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace {

// Points: a picture twice as wide as high fits.
constexpr int IconWidth = 2 * ImageRows::ThumbnailHeight + 2 * ThumbnailCell::Margin;
constexpr int Width = 320;

} // namespace

ImageTable::ImageTable(ImageRows &images, QWidget *parent)
    : QTreeView(parent)
    , rows(images)
{
    setModel(&images);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // and none but the visible rows is ever asked for
    setTextElideMode(Qt::ElideMiddle);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    setItemDelegateForColumn(ImageRows::IconColumn, new ThumbnailCell(this));
    setItemDelegateForColumn(ImageRows::NameColumn, new TextFieldCell(this));
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setStretchLastSection(true);
    header()->resizeSection(ImageRows::IconColumn, IconWidth);
    _seenChanged.setSingleShot(true);
    _seenChanged.callOnTimeout(this, &ImageTable::seenRowsChanged);
    connect(&images, &QAbstractItemModel::modelReset, &_seenChanged, qOverload<>(&QTimer::start));
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { Q_EMIT openAsked(index.row()); });
}

int ImageTable::selectedRow() const
{
    const auto selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void ImageTable::selectRow(int row)
{
    setCurrentIndex(rows.index(row, ImageRows::NameColumn));
}

QList<int> ImageTable::rowsNearby() const
{
    QList<int> nearby;
    const int count = rows.rowCount();
    const QModelIndex top = indexAt({ 0, 0 });
    if (count == 0 || !top.isValid())
        return nearby;
    const int first = top.row();
    const QModelIndex bottom = indexAt({ 0, viewport()->height() - 1 });
    const int last = bottom.isValid() ? bottom.row() : count - 1;
    const int page = last - first + 1;
    for (int row = first; row <= last; ++row)
        nearby.append(row);
    for (int row = last + 1; row < std::min(last + 1 + page, count); ++row)
        nearby.append(row);
    for (int row = first - 1; row >= std::max(first - page, 0); --row)
        nearby.append(row);
    return nearby;
}

QSize ImageTable::thumbnailBound() const
{
    return ThumbnailCell::bound(IconWidth);
}

QSize ImageTable::sizeHint() const
{
    return { Width, QTreeView::sizeHint().height() };
}

void ImageTable::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && selectedRow() >= 0)
        Q_EMIT openAsked(selectedRow());
    else if (const auto row = rowOfKey(*event, selectedRow(), rows.rowCount()))
        selectRow(*row);
    else
        QTreeView::keyPressEvent(event);
}

void ImageTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    Q_EMIT selectionDidChange();
}

void ImageTable::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    _seenChanged.start();
}

void ImageTable::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    _seenChanged.start();
}
