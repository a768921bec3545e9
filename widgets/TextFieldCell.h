#pragma once

#include <QStyledItemDelegate>

// A cell of a table whose text stands in the middle of its height, on one line, whatever the height
// of the row.
class TextFieldCell final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    // Where the text goes that is that high by nature.
    static QRectF interior(const QRectF &frame, double naturalHeight)
    {
        return { frame.x(), frame.y() + (frame.height() - naturalHeight) * 0.5, frame.width(),
                 naturalHeight };
    }
};
