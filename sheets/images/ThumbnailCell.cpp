#include "sheets/images/ThumbnailCell.h"

#include "sheets/images/ImageRows.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

constexpr int IconSide = 32;
constexpr double MissingOpacity = 0.35;

} // namespace

QSize ThumbnailCell::bound(int cellWidth)
{
    return { std::max(cellWidth - 2 * Margin, 1), ImageRows::ThumbnailHeight };
}

QSize ThumbnailCell::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return { option.rect.width(), ImageRows::ThumbnailHeight + 2 * Margin };
}

void ThumbnailCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.state &=
        ~QStyle::State_HasFocus; // the row that has it is selected; pictures keep their colors
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    const auto &rows = *qobject_cast<const ImageRows *>(index.model());
    const ImageRows::Thumbnail thumbnail = rows.thumbnail(index.row());
    QRect place(QPoint(), thumbnail.size);
    if (thumbnail.state != ImageRows::State::Shown)
        place.setSize({ IconSide, IconSide });
    place.moveCenter(cell.rect.center());
    if (thumbnail.state == ImageRows::State::Shown)
        return painter->drawPixmap(place, thumbnail.picture);
    const bool isBroken = thumbnail.state == ImageRows::State::Broken;
    painter->save();
    painter->setOpacity(isBroken ? 1 : MissingOpacity);
    themedIcon(isBroken ? u"image-broken"_s : u"image"_s).paint(painter, place);
    painter->restore();
}
