#include "widgets/AddressField.h"

using namespace Qt::StringLiterals;

AddressField::AddressField(const QString &text, const QString &address, QWidget *parent)
    : QLabel(u"<a href=\"%1\">%2</a>"_s.arg(address.toHtmlEscaped(), text.toHtmlEscaped()), parent)
{
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    setAccessibleName(text);
}

MailTextField::MailTextField(const QString &mailAddress, QWidget *parent)
    : AddressField(mailAddress, u"mailto:"_s + mailAddress, parent)
{
}

WebTextField::WebTextField(const QString &webAddress, QWidget *parent)
    : AddressField(webAddress, webAddress, parent)
{
}
