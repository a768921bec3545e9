#include "reader/Html.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTextDocumentFragment>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Names stand for characters by the toolkit's list; each is asked for once.
QString characterNamed(QStringView name)
{
    static QHash<QString, QString> known;
    const QString key = name.toString();
    if (const auto found = known.constFind(key); found != known.cend())
        return *found;
    const QString reference = u'&' + key + u';';
    const QString text = QTextDocumentFragment::fromHtml(reference).toPlainText();
    constexpr qsizetype Kept = 4096; // a file may have any number of names that are none
    if (known.size() >= Kept)
        known.clear();
    return *known.insert(key, text.size() == reference.size() ? reference : text);
}

QString characterNumbered(QStringView digits)
{
    const bool isHexadecimal = digits.startsWith(u'x', Qt::CaseInsensitive);
    bool isNumber = false;
    const char32_t character =
        isHexadecimal ? digits.sliced(1).toUInt(&isNumber, 16) : digits.toUInt(&isNumber);
    const bool isCharacter =
        isNumber && character > 0 && character <= 0x10FFFF && !QChar::isSurrogate(character);
    return isCharacter ? QString::fromUcs4(&character, 1) : QString(QChar::ReplacementCharacter);
}

// With its references replaced.
QString resolved(QStringView text, Findings &findings)
{
    QString resolved;
    constexpr qsizetype Longest = 32; // of a reference
    while (true) {
        const qsizetype start = text.indexOf(u'&');
        resolved += text.left(start);
        if (start < 0 || findings.isOver()) // each other name takes its time
            return resolved;
        text = text.sliced(start);
        const qsizetype end = text.left(Longest).indexOf(u';');
        const QStringView name = text.mid(1, end - 1);
        const bool isName = end > 1 && std::ranges::all_of(name, [](QChar c) {
                                return c == u'#' || (c.unicode() < 128 && c.isLetterOrNumber());
                            });
        if (!isName) {
            resolved += u'&';
            text = text.sliced(1);
            continue;
        }
        resolved +=
            name.startsWith(u'#') ? characterNumbered(name.sliced(1)) : characterNamed(name);
        text = text.sliced(end + 1);
    }
}

bool isBlank(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == QChar(0);
}

bool isNameCharacter(QChar c)
{
    return c.unicode() < 128 && (c.isLetterOrNumber() || c == u'-' || c == u':' || c == u'_');
}

QHash<QString, QString> attributesOf(QStringView tag, Findings &findings)
{
    QHash<QString, QString> attributes;
    qsizetype at = 0;
    while (at < tag.size()) {
        const qsizetype start = at;
        while (at < tag.size() && isNameCharacter(tag[at]))
            ++at;
        if (at == start) {
            ++at;
            continue;
        }
        const QString name = tag.sliced(start, at - start).toString().toLower();
        while (at < tag.size() && isBlank(tag[at]))
            ++at;
        if (at >= tag.size() || tag[at] != u'=')
            continue;
        ++at;
        while (at < tag.size() && isBlank(tag[at]))
            ++at;
        const QChar quote = at < tag.size() ? tag[at] : QChar();
        const bool isQuoted = quote == u'"' || quote == u'\'';
        const qsizetype value = at + isQuoted;
        at = value;
        while (at < tag.size() && (isQuoted ? tag[at] != quote : !isBlank(tag[at])))
            ++at;
        attributes.insert(name, resolved(tag.sliced(value, at - value), findings));
        at += isQuoted;
    }
    return attributes;
}

// Of a drawing; 0: it has none of its own, but fills a part of a page.
qint64 pixels(const QString &length)
{
    constexpr double Inch = 96; // pixels, as browsers have it
    static const QHash<QString, double> units {
        { u""_s, 1 },
        { u"px"_s, 1 },
        { u"pt"_s, Inch / 72 },
        { u"mm"_s, Inch / 25.4 },
        { u"cm"_s, Inch / 2.54 },
        { u"in"_s, Inch },
    };
    static const QRegularExpression form(uR"(^\s*(\d{1,6}(?:\.\d{1,9})?)\s*([a-z%]*)\s*$)"_s);
    const auto match = form.match(length);
    return qRound64(match.captured(1).toDouble() * units.value(match.captured(2)));
}

class Page {
public:
    Page(const QString &html, Findings &findings)
        : _html(html)
        , _findings(findings)
    {
        _text.reserve(html.size() / 2);
    }
    QString read()
    {
        while (_at < _html.size() && !_findings.isOver()) {
            qsizetype tag = _html.indexOf(u'<', _at);
            tag = tag < 0 ? _html.size() : tag;
            addWords(_html.sliced(_at, tag - _at));
            _at = tag;
            if (_at < _html.size())
                readMarkup();
        }
        return _text;
    }

private:
    void addWords(QStringView words)
    {
        if (words.isEmpty())
            return;
        const bool hasReferences = words.contains(u'&');
        const QString replaced = hasReferences ? resolved(words, _findings) : QString();
        for (const QChar c : hasReferences ? QStringView(replaced) : words) {
            if (!isBlank(c))
                _text += c;
            else if (!_text.isEmpty() && !isBlank(_text.back()))
                _text += u' ';
        }
    }
    void breakLine()
    {
        if (_text.endsWith(u' '))
            _text.chop(1);
        if (!_text.isEmpty() && !_text.endsWith(u'\n'))
            _text += u'\n';
    }
    void skipBehind(QStringView end, qsizetype from)
    {
        const qsizetype found = _html.indexOf(end, from, Qt::CaseInsensitive);
        _at = found < 0 ? _html.size() : found + end.size();
    }
    // Behind the tag; a '>' in quotes does not end it, unless too many have no end themselves.
    qsizetype endOfTag()
    {
        const qsizetype longest = _soughtInVain < _html.size() ? 1 << 16 : 0;
        const qsizetype last = std::min(_html.size(), _at + longest);
        QChar quote;
        for (qsizetype at = _at; at < last; ++at) {
            const QChar c = _html[at];
            if (!quote.isNull())
                quote = c == quote ? QChar() : quote;
            else if (c == u'>')
                return at + 1;
            else if ((c == u'"' || c == u'\'') && _html[at - 1] == u'=')
                quote = c;
        }
        _soughtInVain += longest;
        const qsizetype plain = _html.indexOf(u'>', _at);
        return plain < 0 ? _html.size() : plain + 1;
    }
    void readMarkup()
    {
        const QStringView rest = _html.sliced(_at);
        if (rest.startsWith(u"<!--"))
            return skipBehind(u"-->", _at + 2);
        if (rest.startsWith(u"<![CDATA["))
            return readCharacters();
        if (rest.startsWith(u"<!") || rest.startsWith(u"<?"))
            return skipBehind(u">", _at);
        qsizetype name = rest.startsWith(u"</") ? 2 : 1;
        const bool isEnd = name == 2;
        const qsizetype start = name;
        while (name < std::min<qsizetype>(rest.size(), 32) && isNameCharacter(rest[name]))
            ++name;
        if (name == start) { // a sign of its own
            _text += u'<';
            ++_at;
            return;
        }
        const QString tag = rest.sliced(start, name - start).toString().toLower();
        const qsizetype attributes = _at + name;
        _at = endOfTag();
        readTag(
            tag, isEnd,
            _html.sliced(std::min(attributes, _at), std::max<qsizetype>(0, _at - 1 - attributes)));
    }
    void readCharacters()
    {
        const qsizetype start = _at + qsizetype(std::size(u"<![CDATA[")) - 1;
        skipBehind(u"]]>", start);
        _text += _html.sliced(start, std::max<qsizetype>(0, _at - start - 3));
    }
    void readTag(const QString &tag, bool isEnd, QStringView attributes)
    {
        static const QSet<QString> inWords {
            u"a"_s,      u"abbr"_s, u"b"_s,   u"bdi"_s,   u"bdo"_s,   u"big"_s,
            u"cite"_s,   u"code"_s, u"em"_s,  u"font"_s,  u"i"_s,     u"kbd"_s,
            u"mark"_s,   u"q"_s,    u"s"_s,   u"samp"_s,  u"small"_s, u"span"_s,
            u"strong"_s, u"sub"_s,  u"sup"_s, u"tspan"_s, u"tt"_s,    u"u"_s,
            u"var"_s,    u"wbr"_s,  u"ins"_s, u"del"_s,   u"img"_s,   u"rt"_s
        };
        if (std::exchange(_isFirstTag, false) && tag == u"svg")
            readSize(attributesOf(attributes, _findings));
        if (!inWords.contains(tag))
            breakLine();
        const bool isEmpty = attributes.trimmed().endsWith(u'/') && tag != u"meta"; // as XML has it
        if (isEnd || isEmpty)
            return;
        if (tag == u"script" || tag == u"style") {
            skipBehind(QString(u"</"_s + tag), _at);
            skipBehind(u">", _at);
        } else if (tag == u"title") {
            const qsizetype start = _at;
            skipBehind(u"</title", _at);
            _findings.add(
                u"kMDItemTitle"_s,
                resolved(_html.sliced(start, std::max<qsizetype>(0, _at - start - 7)), _findings));
            skipBehind(u">", _at);
        } else if (tag == u"meta") {
            readMeta(attributesOf(attributes, _findings));
        }
    }
    void readSize(const QHash<QString, QString> &attributes)
    {
        const QStringList box =
            attributes.value(u"viewbox"_s).replace(u',', u' ').simplified().split(u' ');
        const auto side = [&](const QString &name, qsizetype inBox) {
            const qint64 own = pixels(attributes.value(name));
            return own > 0 ? own : pixels(box.value(inBox));
        };
        const qint64 width = side(u"width"_s, 2);
        const qint64 height = side(u"height"_s, 3);
        if (width <= 0 || height <= 0)
            return;
        _findings.add(u"kMDItemPixelWidth"_s, width);
        _findings.add(u"kMDItemPixelHeight"_s, height);
    }
    void readMeta(const QHash<QString, QString> &attributes)
    {
        const QString name = attributes.value(u"name"_s).toLower();
        const QString content = attributes.value(u"content"_s);
        if (name == u"author") {
            _findings.addToList(u"kMDItemAuthors"_s, content);
        } else if (name == u"keywords") {
            for (const QString &word : content.split(u','))
                _findings.addToList(u"kMDItemKeywords"_s, word);
        } else if (name == u"description") {
            _findings.add(u"kMDItemDescription"_s, content);
        } else if (name == u"generator") {
            _findings.add(u"kMDItemCreator"_s, content);
        }
    }

    const QStringView _html;
    Findings &_findings;
    QString _text;
    qsizetype _at = 0;
    qsizetype _soughtInVain = 0; // characters, for the ends of quotes
    bool _isFirstTag = true;
};

} // namespace

QString htmlText(const QString &html, Findings &findings)
{
    return Page(html, findings).read();
}
