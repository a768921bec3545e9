#include "widgets/ElidedLabel.h"

#include <QPainter>

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget *parent)
    : QLabel(parent)
    , _mode(mode)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(textColor());
    painter.drawText(contentsRect(), int(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), _mode, contentsRect().width()));
}
