#include "reader/Kinds.h"

#include <QByteArray>

#include <algorithm>
#include <array>

namespace {

struct Mark {
    qsizetype at;
    QByteArrayView bytes;
    Kind kind;
};

template <size_t Size>
constexpr QByteArrayView raw(const char (&text)[Size]) // with the NULs in it
{
    return { text, Size - 1 };
}

const std::array Marks {
    Mark { 0, raw("PK\3\4"), Kind::Zip },
    Mark { 0, raw("\xFF\xD8\xFF"), Kind::Picture },
    Mark { 0, raw("\x89PNG\r\n\x1A\n"), Kind::Picture },
    Mark { 0, raw("GIF8"), Kind::Picture },
    Mark { 0, raw("II*\0"), Kind::Picture },
    Mark { 0, raw("MM\0*"), Kind::Picture },
    Mark { 0, raw("IIRO"), Kind::Picture }, // raw ones of cameras
    Mark { 0, raw("IIRS"), Kind::Picture },
    Mark { 0, raw("IIU\0"), Kind::Picture },
    Mark { 0, raw("MMOR"), Kind::Picture },
    Mark { 0, raw("FUJIFILM"), Kind::Picture },
    Mark { 0, raw("\0MRM"), Kind::Picture },
    Mark { 6, raw("HEAPCCDR"), Kind::Picture },
    Mark { 0, raw("8BPS"), Kind::Picture },
    Mark { 0, raw("\0\0\0\fjP  "), Kind::Picture },
    Mark { 0, raw("\0\0\1\0"), Kind::Picture }, // an icon
    Mark { 0, raw("icns"), Kind::Picture },
    Mark { 8, raw("WEBP"), Kind::Picture },
    Mark { 4, raw("ftypheic"), Kind::HeifPicture },
    Mark { 4, raw("ftypheix"), Kind::HeifPicture },
    Mark { 4, raw("ftyphevc"), Kind::HeifPicture },
    Mark { 4, raw("ftypheim"), Kind::HeifPicture },
    Mark { 4, raw("ftypheis"), Kind::HeifPicture },
    Mark { 4, raw("ftypmif1"), Kind::HeifPicture },
    Mark { 4, raw("ftypmsf1"), Kind::HeifPicture },
    Mark { 4, raw("ftypavif"), Kind::HeifPicture },
    Mark { 4, raw("ftypavis"), Kind::HeifPicture },
    Mark { 4, raw("ftyp"), Kind::Sound },
    Mark { 4, raw("moov"), Kind::Sound },
    Mark { 0, raw("ID3"), Kind::Sound },
    Mark { 0, raw("fLaC"), Kind::Sound },
    Mark { 0, raw("OggS"), Kind::Sound },
    Mark { 8, raw("WAVE"), Kind::Sound },
    Mark { 8, raw("AIFF"), Kind::Sound },
    Mark { 8, raw("AIFC"), Kind::Sound },
    Mark { 0, raw("MAC "), Kind::Sound },
    Mark { 0, raw("MPCK"), Kind::Sound },
    Mark { 0, raw("MP+"), Kind::Sound },
    Mark { 0, raw("wvPk"), Kind::Sound },
    Mark { 0, raw("TTA1"), Kind::Sound },
    Mark { 0, raw("\x30\x26\xB2\x75\x8E\x66\xCF\x11"), Kind::Sound },
};

bool startsWithoutCase(QByteArrayView bytes, QByteArrayView word)
{
    return bytes.size() >= word.size()
        && qstrnicmp(bytes.data(), word.size(), word.data(), word.size()) == 0;
}

bool endsWithOneOf(QByteArrayView name, std::initializer_list<const char *> ends)
{
    return std::ranges::any_of(ends, [&](const char *end) {
        const QByteArrayView tail = name.last(std::min(name.size(), qsizetype(qstrlen(end))));
        return tail.size() == qsizetype(qstrlen(end)) && startsWithoutCase(tail, end);
    });
}

bool isWideText(QByteArrayView start)
{
    return start.startsWith(raw("\xFF\xFE")) || start.startsWith(raw("\xFE\xFF"))
        || start.startsWith(raw("\0\0\xFE\xFF"));
}

// Text has line ends, tabulators, now and then an escape; no NUL, and hardly anything else of that
// sort.
bool isText(QByteArrayView start)
{
    constexpr qsizetype OneIn = 32;
    qsizetype odd = 0;
    for (const char c : start) {
        if (c == 0)
            return false;
        odd += quint8(c) < ' ' && !(c >= '\a' && c <= '\r') && c != '\x1B';
    }
    return odd * OneIn <= start.size();
}

Kind kindOfText(QByteArrayView text, QByteArrayView name)
{
    if (text.startsWith(raw("\xEF\xBB\xBF")))
        text = text.sliced(3);
    text = text.trimmed();
    const auto begins = [&](const char *word) { return startsWithoutCase(text, word); };
    if (begins("<!doctype html") || begins("<html") || begins("<head") || begins("<svg")
        || begins("<!doctype svg") || endsWithOneOf(name, { ".html", ".htm", ".xhtml", ".svg" }))
        return Kind::Html;
    if (begins("<?xml")) {
        const QByteArray head = text.first(std::min<qsizetype>(text.size(), 1024)).toByteArray();
        if (head.contains("<html") || head.contains("<svg"))
            return Kind::Html;
    }
    if (endsWithOneOf(name, { ".eml" }) || begins("Return-Path:") || begins("Delivered-To:"))
        return Kind::Mail;
    return Kind::Text;
}

} // namespace

Kind kindOf(QByteArrayView start, QByteArrayView name)
{
    constexpr qsizetype PdfWithin = 1024; // its readers allow that much in front of it
    start = start.first(std::min(start.size(), KindBytes));
    const qsizetype pdf = start.first(std::min(start.size(), PdfWithin)).indexOf("%PDF-");
    if (pdf == 0 || (pdf > 0 && !isText(start)))
        return Kind::Pdf;
    if (start.startsWith("{\\rtf"))
        return Kind::RichText;
    // Before the marks, most of which a text may begin with, too.
    if (isWideText(start))
        return Kind::Text;
    if (isText(start))
        return kindOfText(start, name);
    const auto mark = std::ranges::find_if(Marks, [&](const Mark &m) {
        return start.size() >= m.at + m.bytes.size()
            && start.sliced(m.at, m.bytes.size()) == m.bytes;
    });
    if (mark != Marks.end())
        return mark->kind;
    // They begin with the sound itself, or with anything.
    if (endsWithOneOf(name, { ".mp3", ".mp2", ".mp1", ".aac", ".mpc", ".ape" }))
        return Kind::Sound;
    if (endsWithOneOf(name, { ".bmp", ".tga", ".jp2", ".wbmp", ".svgz" }))
        return Kind::Picture;
    return Kind::Unknown;
}
