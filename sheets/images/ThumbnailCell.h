#pragma once

#include <QStyledItemDelegate>

// The cell of a small picture: in the middle, and as large as it is; a drawing stands for one that
// is not there yet or cannot be shown.
class ThumbnailCell final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    static constexpr int Margin = 5; // points around a picture
    static QSize bound(int cellWidth); // of the picture, in points
};
