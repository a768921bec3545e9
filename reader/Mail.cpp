#include "reader/Mail.h"

#include "reader/Html.h"
#include "reader/PlainText.h"

#include <QDateTime>
#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Headers = QHash<QByteArray, QByteArray>; // by name in small letters, the first of each

// Who wrote and who gets it may be many; no more than this is gone through.
constexpr qsizetype LongestHeader = 1 << 16;

struct Part {
    Headers headers;
    QByteArray body;
};

Part parted(const QByteArray &bytes)
{
    Part part;
    QByteArray name;
    qsizetype at = 0;
    while (at < bytes.size()) {
        const qsizetype end = bytes.indexOf('\n', at);
        const qsizetype next = end < 0 ? bytes.size() : end + 1;
        const QByteArray line = bytes.sliced(at, std::min(next - at, LongestHeader));
        at = next;
        if (line.trimmed().isEmpty())
            break;
        const bool goesOn = line.startsWith(' ') || line.startsWith('\t');
        const qsizetype colon = line.indexOf(':');
        if (!goesOn)
            name = colon > 0 ? line.first(colon).trimmed().toLower() : QByteArray();
        const auto known = part.headers.find(name);
        if (goesOn && known != part.headers.end() && known->size() < LongestHeader)
            *known += ' ' + line.trimmed();
        else if (!goesOn && !name.isEmpty() && known == part.headers.end())
            part.headers.insert(name, line.sliced(colon + 1).trimmed());
    }
    part.body = bytes.mid(at);
    return part;
}

QByteArray withoutQuotes(QByteArray text, bool isHeader)
{
    if (isHeader)
        text.replace('_', ' ');
    text.replace("=\r\n", "").replace("=\n", "");
    QByteArray plain;
    plain.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        bool isNumber = false;
        const auto byte = text[at] == '=' ? text.mid(at + 1, 2).toUInt(&isNumber, 16) : 0;
        plain += isNumber ? char(byte) : text[at];
        at += isNumber ? 2 : 0;
    }
    return plain;
}

QString inCharset(const QByteArray &bytes, const QByteArray &charset)
{
    QStringDecoder decoder(charset.constData());
    return decoder.isValid() && charset.toLower() != "us-ascii" ? QString(decoder.decode(bytes))
                                                                : decodedText(bytes);
}

// Words in other letters come as =?charset?Q?...?=; blanks between two of them are none.
QString headerText(const QByteArray &header)
{
    static const QRegularExpression coded(uR"(=\?([^?*]++)[^?]*+\?([bBqQ])\?([^?]*)\?=)"_s);
    static const QRegularExpression between(uR"(\?=\s+=\?)"_s);
    const QString text = decodedText(header).replace(between, u"?==?"_s);
    QString plain;
    qsizetype at = 0;
    for (auto words = coded.globalMatch(text); words.hasNext();) {
        const auto word = words.next();
        const QByteArray bytes = word.captured(3).toLatin1();
        plain += QStringView(text).sliced(at, word.capturedStart() - at);
        plain += inCharset(word.captured(2).compare(u"b", Qt::CaseInsensitive) == 0
                               ? QByteArray::fromBase64(bytes)
                               : withoutQuotes(bytes, true),
                           word.captured(1).toLatin1());
        at = word.capturedEnd();
    }
    plain += QStringView(text).sliced(at);
    return plain;
}

QByteArray parameter(const QByteArray &header, const QString &name)
{
    const QRegularExpression value(u"\\b"_s + name + uR"~(\s*=\s*(?:"([^"]*)"|([^\s;]+)))~"_s,
                                   QRegularExpression::CaseInsensitiveOption);
    const auto match = value.match(QString::fromLatin1(header));
    return match.captured(match.lastCapturedIndex() > 0 ? match.lastCapturedIndex() : 1).toLatin1();
}

// A line that stands between two parts, or behind the last.
struct Border {
    qsizetype start;
    qsizetype end;
    bool isLast; // also the end of the bytes, where they were cut
};

// Each line is looked at once. What merely begins like it is the border of another message, or
// text.
Border nextBorder(const QByteArray &bytes, const QByteArray &border, qsizetype from)
{
    for (qsizetype at = bytes.indexOf(border, from); at >= 0; at = bytes.indexOf(border, at + 1)) {
        if (at > 0 && bytes[at - 1] != '\n')
            continue;
        qsizetype end = at + border.size();
        const bool isLast = QByteArrayView(bytes).sliced(end).startsWith("--");
        end += isLast ? 2 : 0;
        while (end < bytes.size()
               && (bytes[end] == ' ' || bytes[end] == '\t' || bytes[end] == '\r'))
            ++end;
        if (end == bytes.size() || bytes[end] == '\n')
            return { at, std::min(end + 1, bytes.size()), isLast };
    }
    return { bytes.size(), bytes.size(), true };
}

void addWords(const Part &part, int depth, Findings &findings)
{
    constexpr int Deepest = 8; // messages in messages
    constexpr qsizetype LongestBorder = 200; // they have 70 at most; what is looked for costs time
    const QByteArray type = part.headers.value("content-type", "text/plain");
    const QByteArray kind = type.split(';').first().trimmed().toLower();
    if (kind.startsWith("multipart/")) {
        const QByteArray border = "--" + parameter(type, u"boundary"_s).left(LongestBorder);
        if (depth >= Deepest || border.size() == 2)
            return;
        const qsizetype before = findings.contents().text.size();
        Border start = nextBorder(part.body, border, 0);
        while (!start.isLast && !findings.isOver()) {
            const Border end = nextBorder(part.body, border, start.end);
            addWords(parted(part.body.sliced(start.end, end.start - start.end)), depth + 1,
                     findings);
            // The first that has words stands for all.
            if (kind == "multipart/alternative"
                && !QStringView(findings.contents().text).sliced(before).trimmed().isEmpty())
                return;
            start = end;
        }
        return;
    }
    const bool isPage = kind == "text/html";
    if ((!isPage && kind != "text/plain")
        || part.headers.value("content-disposition").toLower().startsWith("attachment"))
        return;
    const QByteArray coding = part.headers.value("content-transfer-encoding").toLower();
    const QByteArray body = coding == "base64" ? QByteArray::fromBase64(part.body)
        : coding == "quoted-printable"         ? withoutQuotes(part.body, false)
                                               : part.body;
    const QString text = inCharset(body, parameter(type, u"charset"_s));
    Findings head = findings.another(); // a title in the page is none of the message
    findings.addText(isPage ? htmlText(text, head) : text);
    findings.addBreak();
}

} // namespace

void readMail(const QByteArray &bytes, Findings &findings)
{
    const Part mail = parted(bytes);
    findings.add(u"kMDItemSubject"_s, headerText(mail.headers.value("subject")));
    findings.addToList(u"kMDItemAuthors"_s, headerText(mail.headers.value("from")));
    for (const QByteArray &person : mail.headers.value("to").split(','))
        findings.addToList(u"kMDItemRecipients"_s, headerText(person));
    findings.add(
        u"kMDItemContentCreationDate"_s,
        QDateTime::fromString(QString::fromLatin1(mail.headers.value("date")), Qt::RFC2822Date));
    addWords(mail, 0, findings);
}
