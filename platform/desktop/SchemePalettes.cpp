#include "platform/desktop/SchemePalettes.h"

#include "platform/desktop/Appearance.h"

#include <QApplication>
#include <QPalette>

namespace {

struct Colours {
    QRgb window, base, alternate, text, button, dim, highlight, highlightedText, link, mid, toolTip,
        checkBox, checkBoxLines, menu, menuLines;
};

constexpr Colours darkColours { 0xff2b2d31, 0xff1f2124, 0xff26282c, 0xffe3e5e8, 0xff383b40,
                                0xff7e838b, 0xff3a78d0, 0xffffffff, 0xff7db0f5, 0xff45484e,
                                0xff3c3f45, 0xff1f2124, 0xffafb6c0, 0xff33363b, 0xff767b85 };
constexpr Colours lightColours { 0xfff1f2f4, 0xffffffff, 0xfff6f7f9, 0xff1c1e21, 0xfffafbfc,
                                 0xff8d939b, 0xff2f6fde, 0xffffffff, 0xff1f5fc4, 0xffc5c9cf,
                                 0xfffdfdf5, 0xffffffff, 0xfff1f2f4, 0xffffffff, 0xfff1f2f4 };
// Each text stands 7 to 1 on each of its grounds, each line 3 to 1.
constexpr Colours darkContrast { 0xff000000, 0xff000000, 0xff141414, 0xffffffff, 0xff141414,
                                 0xffb8b8b8, 0xff6cc0ff, 0xff000000, 0xff9cd3ff, 0xff9a9a9a,
                                 0xff141414, 0xff000000, 0xffd8d8d8, 0xff000000, 0xffd8d8d8 };
constexpr Colours lightContrast { 0xffffffff, 0xffffffff, 0xfff2f2f2, 0xff000000, 0xffffffff,
                                  0xff4c4c4c, 0xff00349a, 0xffffffff, 0xff00349a, 0xff585858,
                                  0xffffffff, 0xffffffff, 0xff8c8c8c, 0xffffffff, 0xff8c8c8c };

// Those that have a frame or lines of their own and no ground in the window's colour.
constexpr const char *Lined[] = {
    "QAbstractScrollArea", "QAbstractSpinBox", "QComboBox",   "QHeaderView",
    "QLineEdit",           "QProgressBar",     "QPushButton", "QRadioButton",
    "QScrollBar",          "QSlider",          "QTabBar"
};

const Colours &coloursOf(const Appearance &appearance)
{
    if (appearance.highContrast)
        return appearance.isDark ? darkContrast : lightContrast;
    return appearance.isDark ? darkColours : lightColours;
}

QPalette paletteOf(const Colours &colours)
{
    QPalette palette(QColor::fromRgb(colours.button), QColor::fromRgb(colours.window));
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::Mid, colours.mid);
    palette.setColor(QPalette::ToolTipBase, colours.toolTip);
    palette.setColor(QPalette::ToolTipText, colours.text);
    palette.setColor(QPalette::PlaceholderText, colours.dim);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, colours.highlightedText);
    palette.setColor(QPalette::Link, colours.link);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText }) {
        palette.setColor(role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.dim);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.mid);
    return palette;
}

} // namespace

void showAppearance(const Appearance &appearance)
{
    const Colours &colours = coloursOf(appearance);
    QPalette palette = paletteOf(colours);
    QApplication::setPalette(palette);
    // The style makes edges and lines darker than the window, which where that is dark or white is
    // not to be seen: so for these the window is said to have another colour.
    QPalette lined = palette;
    if (appearance.highContrast)
        lined.setColor(QPalette::Window, colours.checkBoxLines);
    for (const char *widget : Lined)
        QApplication::setPalette(lined, widget);
    palette.setColor(QPalette::Base, colours.checkBox);
    palette.setColor(QPalette::Window, colours.checkBoxLines);
    QApplication::setPalette(palette, "QCheckBox");
    // So does a menu over a dark list. The style makes its ground a little lighter than this.
    palette.setColor(QPalette::Base, colours.menu);
    palette.setColor(QPalette::Window, colours.menuLines);
    QApplication::setPalette(palette, "QMenu");
}
