#include "files/FileName.h"

#include <QStringDecoder>

namespace {

constexpr char16_t Undecodable = 0xDC00; // plus the byte

bool isAscii(QByteArrayView bytes)
{
    for (const char byte : bytes) {
        if (static_cast<signed char>(byte) < 0)
            return false;
    }
    return true;
}

// The length of the well-formed UTF-8 sequence at the start of the bytes, or 0 (Unicode, table 3-7:
// neither overlong forms nor surrogates).
qsizetype sequenceLength(const unsigned char *s, qsizetype left)
{
    const auto continues = [&](int index, unsigned char low = 0x80, unsigned char high = 0xBF) {
        return left > index && s[index] >= low && s[index] <= high;
    };
    const unsigned char lead = s[0];
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return continues(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned char low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned char high = lead == 0xED ? 0x9F : 0xBF;
        return continues(1, low, high) && continues(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned char low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned char high = lead == 0xF4 ? 0x8F : 0xBF;
        return continues(1, low, high) && continues(2) && continues(3) ? 4 : 0;
    }
    return 0;
}

bool isDirectionControl(char16_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2066 && c <= 0x2069);
}

QString escaped(char16_t c)
{
    switch (c) {
    case '\n':
        return QStringLiteral("\\n");
    case '\t':
        return QStringLiteral("\\t");
    case '\r':
        return QStringLiteral("\\r");
    default:
        return c < 0x100 ? QStringLiteral("\\x%1").arg(QString::number(c, 16).toUpper(), 2, u'0')
                         : QStringLiteral("\\u%1").arg(QString::number(c, 16).toUpper(), 4, u'0');
    }
}

} // namespace

QByteArray FileName::toBytes(QStringView path)
{
    QByteArray bytes;
    qsizetype from = 0;
    const auto appendUpTo = [&](qsizetype end) {
        if (end > from)
            bytes += path.sliced(from, end - from).toUtf8();
    };
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t c = path[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < path.size() && path[i + 1].isLowSurrogate()) {
            ++i;
        } else if (c >= 0xDC80 && c <= 0xDCFF) {
            appendUpTo(i);
            bytes += char(c - Undecodable);
            from = i + 1;
        }
    }
    appendUpTo(path.size());
    return bytes;
}

QString FileName::fromBytes(QByteArrayView bytes)
{
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    QString path;
    path.reserve(bytes.size());
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.data());
    qsizetype from = 0;
    qsizetype i = 0;
    // QString::fromUtf8 would drop a byte order mark, which is a character of the name here.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const auto appendUpTo = [&](qsizetype end) {
        if (end > from)
            path += QString(decode(bytes.sliced(from, end - from)));
    };
    while (i < bytes.size()) {
        if (const qsizetype length = sequenceLength(data + i, bytes.size() - i)) {
            i += length;
            continue;
        }
        appendUpTo(i);
        path += QChar(char16_t(Undecodable + data[i]));
        from = ++i;
    }
    appendUpTo(bytes.size());
    return path;
}

QString FileName::shown(const QString &name)
{
    QString text;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const char16_t c = name[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            text += name[i];
            text += name[++i];
        } else if (QChar::isSurrogate(c)) {
            text += QChar(QChar::ReplacementCharacter);
        } else if (c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029
                   || isDirectionControl(c)) {
            text += escaped(c);
        } else {
            text += name[i];
        }
    }
    return text;
}
