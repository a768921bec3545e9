#include "widgets/Colors.h"

#include <QPalette>

#include <algorithm>

using namespace Qt::StringLiterals;

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

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor colorOfDictionary(const QVariantMap &dictionary)
{
    const auto share = [&](const QString &key) {
        return float(std::clamp(dictionary.value(key).toDouble(), 0.0, 1.0));
    };
    return QColor::fromRgbF(share(u"Red"_s), share(u"Green"_s), share(u"Blue"_s),
                            share(u"Alpha"_s));
}
