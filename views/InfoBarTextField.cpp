#include "views/InfoBarTextField.h"

#include "platform/UserDefaults.h"
#include "util/ColorDictionary.h"
#include "util/SettingsKeys.h"

#include <QPainter>
#include <QPaintEvent>

void InfoBarTextField::readFrameColors(const UserDefaults &defaults)
{
    if (const auto stored = defaults.dictionary(Settings::InfoBarFrameColor))
        _frame = colorOfDictionary(*stored);
    update();
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
