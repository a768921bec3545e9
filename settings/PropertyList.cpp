#include "settings/PropertyList.h"

#include "files/FileName.h"

#include <QDateTime>
#include <QLocale>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t Escape = 0xEF00; // plus a byte; two of them stand for one UTF-16 unit
constexpr int DeepestValue = 100; // values in values; each takes a step of the stack

bool isEscape(QChar c)
{
    return (c.unicode() & 0xFF00) == Escape;
}

bool needsEscape(char16_t c)
{
    return (c < 0x20 && c != '\t' && c != '\n') || isEscape(c) || c >= 0xFFFE;
}

QString encoded(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            plain += c;
            plain += text[++i];
        } else if (c.isSurrogate() || needsEscape(c.unicode())) {
            plain += QChar(char16_t(Escape | c.row()));
            plain += QChar(char16_t(Escape | c.cell()));
        } else {
            plain += c;
        }
    }
    return plain;
}

QString decoded(const QString &plain)
{
    QString text;
    text.reserve(plain.size());
    for (qsizetype i = 0; i < plain.size(); ++i) {
        if (isEscape(plain[i]) && i + 1 < plain.size() && isEscape(plain[i + 1])) {
            text += QChar(plain[i + 1].cell(), plain[i].cell());
            ++i;
        } else {
            text += plain[i];
        }
    }
    return text;
}

// The form of a date has four digits for the year.
bool isWritable(const QDateTime &date)
{
    const int year = date.toUTC().date().year();
    return date.isValid() && year >= 1 && year <= 9999;
}

// Any fault ends the reading: what is not understood is not to be lost by writing the rest.
class Reader {
public:
    explicit Reader(const QByteArray &bytes)
        : _xml(FileName::fromBytes(bytes))
    {
    }

    std::optional<QVariantMap> wholeList()
    {
        QVariantMap map;
        if (_xml.readNextStartElement() && _xml.name() == "plist"_L1 && _xml.readNextStartElement()
            && _xml.name() == "dict"_L1)
            map = dictionary();
        else
            fail();
        if (_xml.readNextStartElement()) // a second root value
            fail();
        while (!_xml.atEnd())
            _xml.readNext();
        return _xml.hasError() ? std::nullopt : std::optional(map);
    }

private:
    void fail() { _xml.raiseError(u"no property list"_s); }

    QVariantMap dictionary()
    {
        QVariantMap map;
        while (_xml.readNextStartElement()) {
            if (_xml.name() != "key"_L1)
                fail();
            const QString key = decoded(_xml.readElementText());
            if (!_xml.readNextStartElement())
                fail();
            map.insert(key, value());
        }
        return map;
    }

    QVariantList array()
    {
        QVariantList list;
        while (_xml.readNextStartElement())
            list.append(value());
        return list;
    }

    QVariant value()
    {
        const QString kind = _xml.name().toString();
        QVariant read;
        ++_depth;
        if (_depth > DeepestValue)
            fail();
        else if (kind == "dict"_L1)
            read = dictionary();
        else if (kind == "array"_L1)
            read = array();
        else
            read = plainValue(kind, _xml.readElementText());
        --_depth;
        if (!read.isValid())
            fail();
        return read;
    }

    // Invalid when the text is none of that kind.
    static QVariant plainValue(const QString &kind, const QString &text)
    {
        bool understood = true;
        QVariant read;
        if (kind == "string"_L1)
            return decoded(text);
        if (kind == "true"_L1 || kind == "false"_L1)
            return kind == "true"_L1;
        if (kind == "integer"_L1) {
            qlonglong number = text.trimmed().toLongLong(&understood);
            if (!understood)
                number = qlonglong(text.trimmed().toULongLong(&understood));
            read = number;
        } else if (kind == "real"_L1) {
            read = text.trimmed().toDouble(&understood);
        } else if (kind == "data"_L1) {
            const auto bytes = QByteArray::fromBase64Encoding(
                text.simplified().remove(u' ').toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
            understood = bool(bytes);
            read = *bytes;
        } else if (kind == "date"_L1) {
            const QDateTime date = QDateTime::fromString(text.trimmed(), Qt::ISODate).toUTC();
            understood = isWritable(date);
            read = date;
        }
        return understood ? read : QVariant();
    }

    QXmlStreamReader _xml;
    int _depth = 0;
};

// Of a normalized value.
void write(QXmlStreamWriter &xml, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return xml.writeEmptyElement(value.toBool() ? u"true"_s : u"false"_s);
    case QMetaType::LongLong:
        return xml.writeTextElement(u"integer"_s, QString::number(value.toLongLong()));
    case QMetaType::Double:
        return xml.writeTextElement(
            u"real"_s, QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
    case QMetaType::QByteArray:
        return xml.writeTextElement(u"data"_s, QString::fromLatin1(value.toByteArray().toBase64()));
    case QMetaType::QDateTime:
        return xml.writeTextElement(u"date"_s, value.toDateTime().toUTC().toString(Qt::ISODate));
    case QMetaType::QVariantList: {
        xml.writeStartElement(u"array"_s);
        const QVariantList items = value.toList();
        for (const QVariant &item : items)
            write(xml, item);
        return xml.writeEndElement();
    }
    case QMetaType::QVariantMap: {
        xml.writeStartElement(u"dict"_s);
        const QVariantMap items = value.toMap();
        for (auto item = items.cbegin(); item != items.cend(); ++item) {
            xml.writeTextElement(u"key"_s, encoded(item.key()));
            write(xml, *item);
        }
        return xml.writeEndElement();
    }
    default:
        xml.writeTextElement(u"string"_s, encoded(value.toString()));
    }
}

} // namespace

std::optional<QVariantMap> PropertyList::read(const QByteArray &bytes)
{
    return Reader(bytes).wholeList();
}

QByteArray PropertyList::toXml(const QVariantMap &dictionary)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(-1); // one tab
    xml.writeStartDocument();
    xml.writeStartElement(u"plist"_s);
    xml.writeAttribute(u"version"_s, u"1.0"_s);
    write(xml, dictionary);
    xml.writeEndDocument();
    return bytes;
}

QVariant PropertyList::normalized(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return value;
    case QMetaType::QDateTime:
        return isWritable(value.toDateTime()) ? value : QVariant();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return value.toLongLong();
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QVariantList list;
        const QVariantList items = value.toList();
        for (const QVariant &item : items) {
            if (const QVariant plain = normalized(item); plain.isValid())
                list.append(plain);
        }
        return list;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (auto item = map.begin(); item != map.end();) {
            *item = normalized(*item);
            item = item->isValid() ? std::next(item) : map.erase(item);
        }
        return map;
    }
    default:
        return {};
    }
}
