#include "settings/SizeText.h"

#include <charconv>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Unit {
    double bytes;
    int decimals; // of one item's size
    QLatin1StringView name;
};

// The unit of a size; nothing below 1 KB. There is none above GB.
std::optional<Unit> unitOf(double bytes)
{
    if (bytes >= 0x1p30)
        return Unit { 0x1p30, 2, " GB"_L1 };
    if (bytes >= 0x1p20)
        return Unit { 0x1p20, 2, " MB"_L1 };
    if (bytes >= 0x1p10)
        return Unit { 0x1p10, 0, " KB"_L1 };
    return std::nullopt;
}

QString digits(double value, std::chars_format format, int precision)
{
    char text[400];
    const auto end = std::to_chars(text, text + sizeof text, value, format, precision).ptr;
    return QString::fromLatin1(text, end - text);
}

} // namespace

QString SizeText::getCalcFileSize(qint64 bytes)
{
    const auto unit = unitOf(double(bytes));
    if (!unit)
        return QString::number(bytes) + u" Bytes"_s;
    return fixed(double(bytes) / unit->bytes, unit->decimals) + unit->name;
}

double SizeText::readAsText(qint64 bytes)
{
    const auto unit = unitOf(double(bytes));
    if (!unit)
        return double(float(bytes));
    // Halves go to the even, as in the text; a long double holds the product without rounding it.
    const int scale = unit->decimals == 2 ? 100 : 1;
    const auto digits = std::rint(static_cast<long double>(double(bytes) / unit->bytes) * scale);
    return double(float(double(digits) / scale)) * unit->bytes;
}

QString SizeText::getCalcFileSizeWithDouble(double bytes)
{
    const auto unit = unitOf(bytes);
    // Kept: below 1 KB a sum reads "0 Bytes", whatever it is. A single item's text does count
    // bytes.
    if (!unit)
        return u"0 Bytes"_s;
    // Kept: three digits, so the last of a unit reads "1.02e+03 KB".
    return digits(bytes / unit->bytes, std::chars_format::general, 3) + unit->name;
}

QString SizeText::getRoundedSize(double bytes)
{
    constexpr QLatin1StringView units[] = { " KB"_L1, " MB"_L1, " GB"_L1, " TB"_L1, " PB"_L1 };
    if (bytes < 0x1p10)
        return fixed(bytes, 0) + u" Bytes"_s;
    const auto *unit = std::begin(units);
    double value = bytes / 0x1p10;
    for (; value >= 0x1p10 && unit + 1 != std::end(units); ++unit)
        value /= 0x1p10;
    constexpr double FourDigits = 999.5; // when it is rounded
    return (value < FourDigits ? digits(value, std::chars_format::general, 3) : fixed(value, 0))
        + *unit;
}

QString SizeText::fixed(double value, int decimals)
{
    return digits(value, std::chars_format::fixed, decimals);
}
