#include "window/InfoBarTextField.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "widgets/Colors.h"

#include <QPainter>
#include <QPaintEvent>

namespace {

constexpr int SidePadding = 3; // between frame and text
constexpr int Padding = 1; // over and under it

} // namespace

void InfoBarTextField::readFrameColors(const UserDefaults &defaults)
{
    _text.reset();
    if (const auto stored = defaults.dictionary(Settings::InfoBarFontColor))
        _text = colorOfDictionary(*stored);
    const auto stored = defaults.dictionary(Settings::InfoBarFrameColor);
    _frame = stored ? colorOfDictionary(*stored) : QColor(Qt::transparent);
    if (_frame.alpha() == 0)
        setContentsMargins({});
    else
        setContentsMargins(SidePadding, Padding, SidePadding, Padding);
    update();
}

QColor InfoBarTextField::textColor() const
{
    // The preferences store the black that they come up with, too: it stands for no choice.
    if (_text && *_text != QColor(Qt::black))
        return isHighContrast() ? standingOut(*_text, ElidedLabel::textColor(),
                                              palette().color(QPalette::Window), EasyContrast)
                                : *_text;
    // Looked at anew each time: the desktop can turn dark while the window is open.
    return isDark(palette()) ? ElidedLabel::textColor() : QColor(Qt::black);
}

void InfoBarTextField::paintEvent(QPaintEvent *event)
{
    ElidedLabel::paintEvent(event);
    if (_frame.alpha() == 0)
        return;
    QPainter painter(this);
    painter.setPen(_frame);
    // Kept: around what is painted anew, so a field that is redrawn in part gets a frame in part.
    painter.drawRect(event->rect().adjusted(0, 0, -1, -1));
}
