#include "widgets/Colors.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

double luminance(const QColor &color)
{
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

QColor faint(const QColor &ground, const QColor &text, double share, double leastContrast)
{
    const QColor mix = mixed(ground, text, share);
    return isHighContrast() ? standingOut(mix, text, ground, leastContrast) : mix;
}

} // namespace

QColor mixed(const QColor &below, const QColor &above, double share)
{
    const auto channel = [share](float from, float to) {
        return from + (to - from) * float(share);
    };
    return QColor::fromRgbF(channel(below.redF(), above.redF()),
                            channel(below.greenF(), above.greenF()),
                            channel(below.blueF(), above.blueF()));
}

QColor shifted(const QColor &color, double share)
{
    const auto channel = [share](float value) {
        return std::clamp(value + float(share), 0.0F, 1.0F);
    };
    return QColor::fromRgbF(channel(color.redF()), channel(color.greenF()), channel(color.blueF()));
}

QColor readableOn(const QColor &ground)
{
    return qGray(ground.rgb()) > 110 ? Qt::black : Qt::white;
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [less, more] = std::minmax({ luminance(a), luminance(b) });
    return (more + 0.05) / (less + 0.05);
}

QColor standingOut(const QColor &color, const QColor &towards, const QColor &ground,
                   double leastContrast)
{
    constexpr int Steps = 50;
    for (int step = 0; step < Steps; ++step)
        if (const QColor mix = mixed(color, towards, double(step) / Steps);
            contrast(mix, ground) >= leastContrast)
            return mix;
    return towards;
}

bool isHighContrast()
{
    // Black and white make 21; no palette with a colour of its own comes near.
    constexpr double AlmostAll = 20;
    const QPalette palette = QGuiApplication::palette();
    return contrast(palette.color(QPalette::Window), palette.color(QPalette::WindowText))
        > AlmostAll
        && contrast(palette.color(QPalette::Base), palette.color(QPalette::Text)) > AlmostAll;
}

QColor faintLine(const QColor &ground, const QColor &text, double share)
{
    return faint(ground, text, share, SeenContrast);
}

QColor faintText(const QColor &ground, const QColor &text, double share)
{
    return faint(ground, text, share, EasyContrast);
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor colorOfDictionary(const QVariantMap &dictionary)
{
    const auto share = [&](const QString &key) {
        const double value = dictionary.value(key).toDouble();
        return value > 0 ? float(std::min(value, 1.0)) : 0; // of "not a number" nothing is true
    };
    return QColor::fromRgbF(share(u"Red"_s), share(u"Green"_s), share(u"Blue"_s),
                            share(u"Alpha"_s));
}

QVariantMap dictionaryOfColor(const QColor &color)
{
    return { { u"Red"_s, double(color.redF()) },
             { u"Green"_s, double(color.greenF()) },
             { u"Blue"_s, double(color.blueF()) },
             { u"Alpha"_s, double(color.alphaF()) } };
}
