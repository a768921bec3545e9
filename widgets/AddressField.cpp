#include "widgets/AddressField.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

using namespace Qt::StringLiterals;

AddressField::AddressField(const QString &text, const QString &address, QWidget *parent)
    : QPushButton(text, parent)
    , _address(address)
{
    setFlat(true);
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(text);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void AddressField::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Link));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

MailTextField::MailTextField(const QString &mailAddress, QWidget *parent)
    : AddressField(mailAddress, u"mailto:"_s + mailAddress, parent)
{
}

WebTextField::WebTextField(const QString &webAddress, QWidget *parent)
    : AddressField(webAddress, webAddress, parent)
{
}
