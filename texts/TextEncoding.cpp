#include "texts/TextEncoding.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <iconv.h>
#include <memory>
#include <numeric>

namespace {

constexpr char32_t Broken = QChar::ReplacementCharacter;
constexpr qsizetype LeastForLook = 4; // bytes, to take a text without mark for one of wide units

bool continues(char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Unicode, table 3-7; what is broken is as long as it went well.
TextEncoding::Character firstOfUtf8(QByteArrayView bytes)
{
    const auto at = [&](qsizetype i) { return i < bytes.size() ? quint8(bytes[i]) : quint8(0); };
    const quint8 lead = at(0);
    if (lead < 0x80)
        return { lead, 1 };
    const int length = lead >= 0xF0 && lead <= 0xF4 ? 4
        : lead >= 0xE0 && lead < 0xF0               ? 3
        : lead >= 0xC2 && lead < 0xE0               ? 2
                                                    : 1;
    char32_t code = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const quint8 byte = at(i);
        const quint8 low = i > 1 ? 0x80 : lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const quint8 high = i > 1 ? 0xBF : lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (byte < low || byte > high)
            return { Broken, i };
        code = code << 6 | (byte & 0x3F);
    }
    return length == 1 ? TextEncoding::Character { Broken, 1 }
                       : TextEncoding::Character { code, length };
}

char32_t unitAt(TextEncoding::Form form, const char *bytes)
{
    using enum TextEncoding::Form;
    switch (form) {
    case Utf16LE:
        return qFromLittleEndian<quint16>(bytes);
    case Utf16BE:
        return qFromBigEndian<quint16>(bytes);
    case Utf32LE:
        return qFromLittleEndian<quint32>(bytes);
    default:
        return qFromBigEndian<quint32>(bytes);
    }
}

// Half of the letters of most texts in wide units have a zero in one place, and seldom one in the
// other.
std::optional<TextEncoding::Form> formByZeros(QByteArrayView start)
{
    qsizetype zeros[4] = {};
    const qsizetype all = start.size() / 4;
    for (qsizetype i = 0; i < all * 4; ++i)
        zeros[i % 4] += start[i] == 0;
    using enum TextEncoding::Form;
    if (all == 0)
        return {};
    if (zeros[3] == all && zeros[2] * 10 > all * 9 && zeros[0] * 10 < all)
        return Utf32LE;
    if (zeros[0] == all && zeros[1] * 10 > all * 9 && zeros[3] * 10 < all)
        return Utf32BE;
    const qsizetype odd = zeros[1] + zeros[3];
    const qsizetype even = zeros[0] + zeros[2];
    if (odd > all && even * 20 < all)
        return Utf16LE;
    if (even > all && odd * 20 < all)
        return Utf16BE;
    return {};
}

bool isTextControl(quint8 c)
{
    return (c >= '\b' && c <= '\r') || c == 0x1B;
}

// Whether the few characters that are no text are few. Of a cut sequence at the end nobody knows.
bool isWideText(const TextEncoding &encoding, QByteArrayView start)
{
    int odd = 0;
    int all = 0;
    for (qsizetype at = 0; at + 3 < start.size(); ++all) {
        const auto [code, length] = encoding.first(start.sliced(at));
        odd += code == Broken || (code < 0x20 && !isTextControl(quint8(code)));
        at += length;
    }
    return odd * 20 <= all;
}

} // namespace

const QList<TextEncoding> &TextEncoding::all()
{
    static const QList<TextEncoding> encodings = [] {
        QList<TextEncoding> list { { Form::Utf8, "UTF-8" },
                                   { Form::Utf16LE, "UTF-16 LE" },
                                   { Form::Utf16BE, "UTF-16 BE" },
                                   { Form::Utf32LE, "UTF-32 LE" },
                                   { Form::Utf32BE, "UTF-32 BE" } };
        for (const char *name : { "Windows-1252", "ISO-8859-1", "ISO-8859-15", "Windows-1250",
                                  "ISO-8859-2", "Windows-1251", "KOI8-R", "ISO-8859-5",
                                  "Windows-1253", "Windows-1254", "IBM437", "IBM850", "Macintosh" })
            if (const Table *table = tableOf(name))
                list.append({ Form::SingleByte, name, table });
        return list;
    }();
    return encodings;
}

// As the system's converter has it; none where it does not know the name.
const TextEncoding::Table *TextEncoding::tableOf(const char *name)
{
    auto table = std::make_unique<Table>();
    std::iota(table->begin(), table->end(), u'\0');
    if (QByteArrayView(name) == "ISO-8859-1")
        return table.release();
    // The one that texts without a mark are taken for is known without any help.
    constexpr char16_t in1252[] = u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030"
                                  u"\u0160\u2039\u0152\x8D\u017D\x8F\x90\u2018\u2019\u201C\u201D"
                                  u"\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E"
                                  u"\u0178";
    if (QByteArrayView(name) == "Windows-1252") {
        std::copy_n(in1252, 0x20, table->begin() + 0x80);
        return table.release();
    }
    const iconv_t converter = iconv_open("UTF-16LE", name);
    if (converter == iconv_t(-1))
        return nullptr;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        char in = char(byte);
        char *from = &in;
        char out[8];
        char *to = out;
        std::size_t inLeft = 1;
        std::size_t outLeft = sizeof out;
        const bool isOne =
            iconv(converter, &from, &inLeft, &to, &outLeft) != std::size_t(-1) && to == out + 2;
        (*table)[std::size_t(byte)] = isOne ? qFromLittleEndian<char16_t>(out) : char16_t(Broken);
        iconv(converter, nullptr, nullptr, nullptr, nullptr);
    }
    iconv_close(converter);
    return table.release(); // for as long as the process lives
}

bool TextEncoding::looksLikeText(QByteArrayView start)
{
    const auto odd = std::ranges::count_if(
        start, [](char c) { return quint8(c) < 0x20 && !isTextControl(quint8(c)); });
    return odd <= 1 + start.size() / 20 && !start.contains('\0');
}

std::optional<TextEncoding> TextEncoding::of(QByteArrayView start, bool isWhole)
{
    const auto encoding = [](Form form) {
        return *std::ranges::find(all(), form, &TextEncoding::form);
    };
    if (start.startsWith("\xEF\xBB\xBF"))
        return encoding(Form::Utf8);
    if (start.size() >= 4 && unitAt(Form::Utf32LE, start.data()) == 0xFEFF)
        return encoding(Form::Utf32LE);
    if (start.size() >= 4 && unitAt(Form::Utf32BE, start.data()) == 0xFEFF)
        return encoding(Form::Utf32BE);
    if (start.startsWith("\xFF\xFE"))
        return encoding(Form::Utf16LE);
    if (start.startsWith("\xFE\xFF"))
        return encoding(Form::Utf16BE);
    if (start.size() >= LeastForLook && start.contains('\0'))
        if (const auto form = formByZeros(start); form && isWideText(encoding(*form), start))
            return encoding(*form);
    if (!looksLikeText(start))
        return {};
    // A character may be cut at the end.
    const qsizetype mostCut = isWhole ? 0 : std::min<qsizetype>(start.size(), 3);
    for (qsizetype cut = 0; cut <= mostCut; ++cut)
        if (QByteArray::fromRawData(start.data(), start.size() - cut).isValidUtf8())
            return encoding(Form::Utf8);
    return *std::ranges::find(all(), QByteArrayView("Windows-1252"),
                              [](const TextEncoding &each) { return QByteArrayView(each._name); });
}

int TextEncoding::unit() const
{
    switch (_form) {
    case Form::Utf16LE:
    case Form::Utf16BE:
        return 2;
    case Form::Utf32LE:
    case Form::Utf32BE:
        return 4;
    default:
        return 1;
    }
}

TextEncoding::Character TextEncoding::first(QByteArrayView bytes) const
{
    if (_form == Form::Utf8)
        return firstOfUtf8(bytes);
    if (_form == Form::SingleByte)
        return { (*_table)[quint8(bytes[0])], 1 };
    const int size = unit();
    if (bytes.size() < size)
        return { Broken, int(bytes.size()) };
    const char32_t code = unitAt(_form, bytes.data());
    if (size == 4)
        return { code > QChar::LastValidCodePoint || QChar::isSurrogate(code) ? Broken : code, 4 };
    if (!QChar::isSurrogate(code))
        return { code, 2 };
    const char32_t next = bytes.size() >= 4 ? unitAt(_form, bytes.data() + 2) : 0;
    if (QChar::isHighSurrogate(code) && QChar::isLowSurrogate(next))
        return { QChar::surrogateToUcs4(char16_t(code), char16_t(next)), 4 };
    return { Broken, 2 };
}

int TextEncoding::bytesToBoundary(QByteArrayView before, QByteArrayView after) const
{
    if (_form == Form::Utf8) {
        int count = 0;
        while (count < 3 && count < after.size() && continues(after[count]))
            ++count;
        return count;
    }
    const bool isPair = unit() == 2 && before.size() >= 2 && after.size() >= 2
        && QChar::isHighSurrogate(unitAt(_form, before.data() + before.size() - 2))
        && QChar::isLowSurrogate(unitAt(_form, after.data()));
    return isPair ? 2 : 0;
}

std::optional<QByteArray> TextEncoding::encoded(const QString &text) const
{
    if (_form == Form::Utf8)
        return text.toUtf8();
    QByteArray bytes;
    const auto codes = text.toUcs4();
    for (const char32_t code : codes) {
        char unit[4];
        if (_form == Form::SingleByte) {
            const auto found = std::ranges::find(*_table, code);
            if (found == _table->end())
                return {};
            bytes += char(found - _table->begin());
        } else if (_form == Form::Utf32LE || _form == Form::Utf32BE) {
            _form == Form::Utf32LE ? qToLittleEndian(quint32(code), unit)
                                   : qToBigEndian(quint32(code), unit);
            bytes.append(unit, 4);
        } else {
            for (const char16_t half : QChar::fromUcs4(code)) {
                _form == Form::Utf16LE ? qToLittleEndian(half, unit) : qToBigEndian(half, unit);
                bytes.append(unit, 2);
            }
        }
    }
    return bytes;
}

QString TextEncoding::decoded(QByteArrayView bytes) const
{
    QString text;
    text.reserve(bytes.size() / unit());
    for (qsizetype at = 0; at < bytes.size();) {
        const auto [code, length] = first(bytes.sliced(at));
        text += QChar::fromUcs4(code);
        at += length;
    }
    return text;
}
