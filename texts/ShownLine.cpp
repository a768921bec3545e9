#include "texts/ShownLine.h"

#include "files/FileName.h"

#include <algorithm>

namespace {

constexpr char32_t Mark = 0xFEFF; // at the start of a file it says how that is written
constexpr char Digits[] = "0123456789ABCDEF";

bool endsLine(char32_t code)
{
    return code == '\n' || code == '\r';
}

} // namespace

ShownLine ShownLine::ofText(QByteArrayView line, qint64 offset, const TextEncoding &encoding)
{
    ShownLine shown;
    shown.text.reserve(line.size() + 1);
    shown.bytes.reserve(std::size_t(line.size() + 1));
    qsizetype units = 0; // without the ends of lines that nothing follows
    qsizetype end = 0;
    for (qsizetype at = 0; at < line.size();) {
        const auto [code, length] = encoding.first(line.sliced(at));
        if (code >= 0x20 && code < 0x7F)
            shown.text += QChar(char16_t(code));
        else if (code == '\t')
            shown.text += u'\t';
        else if (code != Mark || offset + at > 0)
            shown.text += FileName::shown(QString::fromUcs4(&code, 1));
        shown.bytes.resize(std::size_t(shown.text.size()), int(at));
        at += length;
        if (!endsLine(code)) {
            units = shown.text.size();
            end = at;
        }
    }
    shown.text.truncate(units);
    shown.bytes.resize(std::size_t(units));
    shown.bytes.push_back(int(end));
    return shown;
}

int ShownLine::offsetDigits(qint64 fileSize)
{
    int digits = 8;
    while (digits < 16 && fileSize >> (4 * digits) != 0)
        digits += 2;
    return digits;
}

ShownLine ShownLine::ofBytes(QByteArrayView row, qint64 offset, int digits)
{
    ShownLine shown;
    const auto add = [&shown](QChar c, int byte) {
        shown.text += c;
        shown.bytes.push_back(byte);
    };
    for (int digit = digits - 1; digit >= 0; --digit)
        add(QLatin1Char(Digits[(offset >> (4 * digit)) & 0xF]), -1);
    const int count = int(row.size());
    for (int i = 0; i < BytesInRow; ++i) {
        const int byte = std::min(i, count); // what is behind the last one is its end
        const int before = std::min(i - 1, count);
        for (int blank = i % 8 == 0 ? 2 : 1; blank > 0; --blank)
            add(u' ', before);
        add(i < count ? QLatin1Char(Digits[quint8(row[i]) >> 4]) : QLatin1Char(' '), byte);
        add(i < count ? QLatin1Char(Digits[quint8(row[i]) & 0xF]) : QLatin1Char(' '), byte);
    }
    add(u' ', count);
    add(u' ', count);
    for (int i = 0; i < count; ++i)
        add(row[i] >= 0x20 && row[i] < 0x7F ? QLatin1Char(row[i]) : QLatin1Char('.'), i);
    shown.bytes.push_back(count);
    return shown;
}

int ShownLine::unitOf(int byte) const
{
    const auto found = std::ranges::find_if(bytes, [byte](int each) { return each >= byte; });
    return found == bytes.end() ? int(text.size()) : int(found - bytes.begin());
}

std::vector<ShownLine::Units> ShownLine::unitsOf(qint64 firstByte, qint64 endByte) const
{
    std::vector<Units> found;
    for (int unit = 0; unit < text.size(); ++unit) {
        const int byte = bytes[std::size_t(unit)];
        if (byte < 0 || byte < firstByte || byte >= endByte)
            continue;
        if (!found.empty() && found.back().start + found.back().length == unit)
            ++found.back().length;
        else
            found.push_back({ unit, 1 });
    }
    return found;
}
