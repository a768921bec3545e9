#include "window/ClassicButton.h"

#include "widgets/Colors.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace {

constexpr int Gap = 8; // between the name and its key
constexpr double KeyOpacity = 0.6;

} // namespace

ClassicButton::ClassicButton(const QString &command, const QString &key, QWidget *parent)
    : QPushButton(command, parent)
    , _key(key)
{
    // A click must leave the focus in the pane that the command is about to act on.
    setFocusPolicy(Qt::NoFocus);
    setAutoDefault(false);
    setAccessibleName(command);
    setAccessibleDescription(key);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int ClassicButton::keyWidth() const
{
    return _key.isEmpty() ? 0 : Gap + fontMetrics().horizontalAdvance(_key);
}

QSize ClassicButton::sizeHint() const
{
    return QPushButton::sizeHint() + QSize(keyWidth(), 0);
}

void ClassicButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);

    const int nameWidth = fontMetrics().horizontalAdvance(text());
    QRect area = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    area.setLeft(area.left() + std::max(0, (area.width() - nameWidth - keyWidth()) / 2));
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    area.setLeft(area.left() + nameWidth + Gap);
    painter.setOpacity(isHighContrast() ? 1 : KeyOpacity);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, _key);
}
