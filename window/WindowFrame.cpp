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

const std::pair<QString, Qt::WindowState> KeptStates[] = {
    { u"Maximized"_s, Qt::WindowMaximized },
    { u"FullScreen"_s, Qt::WindowFullScreen },
};
const auto ActivePane = u"ActivePane"_s;

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
    for (const auto &[key, state] : KeptStates)
        if (stored && stored->value(key).toBool())
            window.setWindowState(window.windowState() | state);

    if (const QList<int> widths = numbersOf(defaults.array(Settings::PaneWidths));
        widths.size() == 2)
        window.splitView->setSizes(widths);
}

Side lastActivePane(const UserDefaults &defaults)
{
    const auto stored = defaults.dictionary(Settings::MainWindowFrame);
    return stored && stored->value(ActivePane) == sideWord(Side::Right) ? Side::Right : Side::Left;
}

void restoreColumns(MainWindowLayout &window, const UserDefaults &defaults)
{
    for (const Side side : { Side::Left, Side::Right })
        window.fileList(side).setColumnWidths(
            numbersOf(defaults.array(paneSettings(side).columnWidths)));
}

void saveFrame(const MainWindowLayout &window, Side active, UserDefaults &defaults)
{
    // Both without the desktop's frame: its size would add up from one maximized session to the
    // next.
    const QRect frame = window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)
        ? window.normalGeometry()
        : window.geometry();
    QVariantMap stored = defaults.dictionary(Settings::MainWindowFrame).value_or(QVariantMap());
    // On Wayland nobody knows where a window stands: the place of the last other desktop stays.
    if (!QGuiApplication::platformName().startsWith("wayland"_L1) || stored.isEmpty()) {
        stored[u"X"_s] = frame.x();
        stored[u"Y"_s] = frame.y();
    }
    stored[u"Width"_s] = frame.width();
    stored[u"Height"_s] = frame.height();
    for (const auto &[key, state] : KeptStates)
        stored[key] = window.windowState().testFlag(state);
    stored[ActivePane] = sideWord(active);
    defaults.setValue(Settings::MainWindowFrame, stored);
    defaults.setValue(Settings::PaneWidths, asStored(window.splitView->sizes()));
    for (const Side side : { Side::Left, Side::Right })
        defaults.setValue(paneSettings(side).columnWidths,
                          asStored(window.fileList(side).chosenWidths()));
}
