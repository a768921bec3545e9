#include "widgets/MenuTextButton.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

using namespace Qt::StringLiterals;

MenuTextButton::MenuTextButton(QWidget *parent)
    : QToolButton(parent)
{
    setAutoRaise(true);
    setPopupMode(InstantPopup);
}

void MenuTextButton::setPlainText(const QString &text)
{
    setText(QString(text).replace(u'&', u"&&"_s) + u" \u25be"_s);
    setAccessibleName(text);
}

void MenuTextButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.features &= ~QStyleOptionToolButton::HasMenu;
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}
