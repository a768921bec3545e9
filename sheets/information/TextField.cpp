#include "sheets/information/TextField.h"

#include "files/FileName.h"
#include "widgets/MenuText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr int SideMargin = 2; // the toolkit's own

} // namespace

TextField::TextField(const QString &name, QWidget *parent)
    : QLineEdit(parent)
{
    setReadOnly(true);
    setFrame(false);
    setAccessibleName(name);
    setTextColor({});
}

void TextField::showText(const QString &text)
{
    const QString shown = FileName::shown(text);
    if (shown == this->text())
        return;
    setText(shown);
    setCursorPosition(0);
}

void TextField::setTextColor(const QColor &color)
{
    QPalette own; // only what it says itself, so that the rest follows the window
    own.setBrush(QPalette::Base, Qt::transparent);
    if (color.isValid())
        own.setColor(QPalette::Text, color);
    setPalette(own);
}

QRect TextField::textArea() const
{
    return contentsRect().adjusted(SideMargin, 0, -SideMargin, 0);
}

bool TextField::isCut() const
{
    return fontMetrics().horizontalAdvance(text()) > textArea().width();
}

bool TextField::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           isCut() ? plainToolTip(text()) : QString(), this);
        return true;
    }
    return QLineEdit::event(event);
}

void TextField::paintEvent(QPaintEvent *event)
{
    if (hasFocus() || !isCut())
        return QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(textArea(), int(alignment() | Qt::AlignVCenter) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, textArea().width()));
}
