#include "reader/PlainText.h"

#include "platform/ReaderWords.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <langinfo.h>

using namespace Qt::StringLiterals;

namespace {

// The name that the first lines give, in one of the usual ways.
QByteArray declaredCharset(const QByteArray &bytes)
{
    constexpr qsizetype DeclaredWithin = 1024;
    static const QRegularExpression declaration(
        uR"~(<\?xml[^>]*\bencoding\s*=\s*["']([\w.:-]+)|)~"
        uR"~(<meta[^>]*\bcharset\s*=\s*["']?\s*([\w.:-]+)|)~"
        uR"~(@charset\s+"([\w.:-]+)"|(?:coding|fileencoding|fenc)[:=]\s*([\w.-]+))~"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto match =
        declaration.match(QString::fromLatin1(bytes.first(std::min(bytes.size(), DeclaredWithin))));
    return match.captured(match.lastCapturedIndex()).toLatin1();
}

// Without the mark in front of it, and a character in whose middle the reading ended.
QByteArrayView wholeUtf8(const QByteArray &bytes)
{
    QByteArrayView whole(bytes);
    if (whole.startsWith("\xEF\xBB\xBF"))
        whole = whole.sliced(3);
    if (bytes.size() < ReaderWords::TextLimit)
        return whole;
    qsizetype tail = 0;
    while (tail < std::min<qsizetype>(whole.size(), 3)
           && (quint8(whole[whole.size() - 1 - tail]) & 0xC0) == 0x80)
        ++tail;
    if (tail < whole.size()) {
        const quint8 lead = quint8(whole[whole.size() - 1 - tail]);
        const qsizetype wanted = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        if (lead >= 0xC0 && tail < wanted)
            whole.chop(tail + 1);
    }
    return whole;
}

QStringDecoder decoderFor(const QByteArray &charset)
{
    // What declares UTF-16 in single bytes is not.
    if (charset.isEmpty() || charset.toLower().startsWith("utf") || charset.toLower() == "ascii"
        || charset.toLower() == "us-ascii")
        return {};
    return QStringDecoder(charset.toLower() == "iso-8859-1" || charset.toLower() == "latin-1"
                              ? "windows-1252" // as browsers have it: it holds more
                              : charset.constData());
}

} // namespace

QString decodedText(const QByteArray &bytes)
{
    if (const auto wide = QStringConverter::encodingForData(bytes);
        wide && *wide != QStringConverter::Utf8)
        return QStringDecoder(*wide).decode(bytes);
    const QByteArray declared = declaredCharset(bytes);
    const QByteArrayView utf8 = wholeUtf8(bytes);
    const bool isInEscapes = declared.toLower().startsWith("iso-2022") && bytes.contains('\x1B');
    if (!isInEscapes && utf8.isValidUtf8())
        return QString::fromUtf8(utf8);
    for (const QByteArray &charset :
         { declared, QByteArray(nl_langinfo(CODESET)), QByteArray("windows-1252") }) {
        if (charset.startsWith("ANSI_"))
            continue; // the locale that knows no characters
        if (auto decoder = decoderFor(charset); decoder.isValid())
            return decoder.decode(bytes);
    }
    return QString::fromLatin1(bytes);
}
