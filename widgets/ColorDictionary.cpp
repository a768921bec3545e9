#include "widgets/ColorDictionary.h"

#include <algorithm>

using namespace Qt::StringLiterals;

QColor colorOfDictionary(const QVariantMap &dictionary)
{
    const auto share = [&](const QString &key) {
        return float(std::clamp(dictionary.value(key).toDouble(), 0.0, 1.0));
    };
    return QColor::fromRgbF(share(u"Red"_s), share(u"Green"_s), share(u"Blue"_s),
                            share(u"Alpha"_s));
}
