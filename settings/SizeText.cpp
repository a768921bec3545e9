#include "settings/SizeText.h"

#include <charconv>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Scaled {
    double value;
    QString unit;
};

// The value in its unit; nothing below 1 KB. There is no unit above GB.
std::optional<Scaled> scaled(double bytes)
{
    if (bytes >= 0x1p30)
        return Scaled { bytes * 0x1p-30, u" GB"_s };
    if (bytes >= 0x1p20)
        return Scaled { bytes * 0x1p-20, u" MB"_s };
    if (bytes >= 0x1p10)
        return Scaled { bytes * 0x1p-10, u" KB"_s };
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
    const auto size = scaled(double(bytes));
    if (!size)
        return QString::number(bytes) + u" Bytes"_s;
    const int decimals = bytes >= 0x100000 ? 2 : 0;
    return fixed(size->value, decimals) + size->unit;
}

QString SizeText::getCalcFileSizeWithDouble(double bytes)
{
    const auto size = scaled(bytes);
    // Kept: below 1 KB a sum reads "0 Bytes", whatever it is. A single item's text does count
    // bytes.
    if (!size)
        return u"0 Bytes"_s;
    // Kept: three digits, so the last of a unit reads "1.02e+03 KB".
    return digits(size->value, std::chars_format::general, 3) + size->unit;
}

QString SizeText::fixed(double value, int decimals)
{
    return digits(value, std::chars_format::fixed, decimals);
}
