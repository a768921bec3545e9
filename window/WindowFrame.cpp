#include "window/WindowFrame.h"

#include "model/PaneSettings.h"
#include "views/TableViews.h"
#include "window/MainWindowLayout.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QVariantList asStored(const QList<int> &numbers)
{
    return { numbers.begin(), numbers.end() };
}

QList<int> numbersOf(const std::optional<QVariantList> &stored)
{
    QList<int> numbers;
    for (const QVariant &number : stored.value_or(QVariantList()))
        numbers.append(number.toInt());
    return numbers;
}

} // namespace

QRect fittedTo(const QRect &screen, const QRect &frame)
{
    const QSize size = frame.size().boundedTo(screen.size());
    const auto clamped = [](int wanted, int first, int room) {
        return std::clamp(wanted, first, first + std::max(room, 0));
    };
    return { QPoint(clamped(frame.x(), screen.x(), screen.width() - size.width()),
                    clamped(frame.y(), screen.y(), screen.height() - size.height())),
             size };
}

void restoreFrame(MainWindowLayout &window, const UserDefaults &defaults)
{
    const auto stored = defaults.dictionary(Settings::MainWindowFrame);
    QRect frame(QPoint(), window.size());
    if (stored)
        frame = { stored->value(u"X"_s).toInt(), stored->value(u"Y"_s).toInt(),
                  stored->value(u"Width"_s).toInt(), stored->value(u"Height"_s).toInt() };
    const QScreen *screen = QGuiApplication::screenAt(frame.center());
    QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    // The desktop's own title comes on top.
    room.setTop(room.top() + window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
    frame = fittedTo(room, frame);
    if (stored)
        window.setGeometry(frame);
    else
        window.resize(frame.size());
    if (stored && stored->value(u"Maximized"_s).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);

    if (const QList<int> widths = numbersOf(defaults.array(Settings::PaneWidths));
        widths.size() == 2)
        window.splitView->setSizes(widths);
}

void restoreColumns(MainWindowLayout &window, const UserDefaults &defaults)
{
    for (const Side side : { Side::Left, Side::Right })
        window.fileList(side).setColumnWidths(
            numbersOf(defaults.array(paneSettings(side).columnWidths)));
}

void saveFrame(const MainWindowLayout &window, UserDefaults &defaults)
{
    // Both without the desktop's frame: its size would add up from one maximized session to the
    // next.
    const QRect frame = window.isMaximized() ? window.normalGeometry() : window.geometry();
    defaults.setValue(Settings::MainWindowFrame,
                      QVariantMap { { u"X"_s, frame.x() },
                                    { u"Y"_s, frame.y() },
                                    { u"Width"_s, frame.width() },
                                    { u"Height"_s, frame.height() },
                                    { u"Maximized"_s, window.isMaximized() } });
    defaults.setValue(Settings::PaneWidths, asStored(window.splitView->sizes()));
    for (const Side side : { Side::Left, Side::Right })
        defaults.setValue(paneSettings(side).columnWidths,
                          asStored(window.fileList(side).chosenWidths()));
}
