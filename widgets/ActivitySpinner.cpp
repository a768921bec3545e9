#include "widgets/ActivitySpinner.h"

#include "base/Localized.h"

#include <QPainter>
#include <QTimerEvent>

namespace {

constexpr int Spokes = 12;
constexpr int Interval = 1000 / Spokes; // milliseconds: one turn a second
constexpr int Side = 16;
constexpr int Margin = 6;

} // namespace

ActivitySpinner::ActivitySpinner(QWidget *parent)
    : QWidget(parent)
{
    setAccessibleName(localized("Activity"));
    setFixedSize(sizeHint());
}

QSize ActivitySpinner::sizeHint() const
{
    return { Side + 2 * Margin, Side };
}

void ActivitySpinner::start()
{
    if (_running++ == 0)
        _timer.start(Interval, this);
    update();
}

void ActivitySpinner::stop()
{
    // A stop too many is no debt: the next start turns it again.
    _running = std::max(0, _running - 1);
    if (_running == 0)
        _timer.stop();
    update();
}

void ActivitySpinner::timerEvent(QTimerEvent *)
{
    _step = (_step + 1) % Spokes;
    update();
}

void ActivitySpinner::paintEvent(QPaintEvent *)
{
    if (!isSpinning())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().center() + QPointF(0.5, 0.5));
    QColor color = palette().color(QPalette::WindowText);
    for (int spoke = 0; spoke < Spokes; ++spoke) {
        // The newest spoke is the darkest, the others fade behind it.
        const int age = (_step - spoke + Spokes) % Spokes;
        color.setAlphaF(1.0F - 0.85F * float(age) / (Spokes - 1));
        painter.setPen(QPen(color, Side / 9.0, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 / Spokes * spoke);
        painter.drawLine(QPointF(0, -Side * 0.25), QPointF(0, -Side * 0.45));
        painter.restore();
    }
}
