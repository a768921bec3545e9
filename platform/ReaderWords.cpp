#include "platform/ReaderWords.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <cstring>

namespace {

using namespace ReaderWords;

enum class Kind : quint8 { Text = 1, List, Whole, Real, Date, Truth };

template <typename Number>
void append(QByteArray &bytes, Number number)
{
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

void append(QByteArray &bytes, const QString &text)
{
    qsizetype size = std::min(text.size(), AttributeLimit);
    if (size < text.size() && text[size - 1].isHighSurrogate())
        --size;
    append(bytes, quint32(size));
    bytes.append(reinterpret_cast<const char *>(text.constData()), size * qsizetype(sizeof(QChar)));
}

// Nothing for a type that no attribute has.
std::optional<QByteArray> bytesOf(const QVariant &value)
{
    QByteArray bytes;
    switch (value.typeId()) {
    case QMetaType::QString:
        append(bytes, Kind::Text);
        append(bytes, value.toString());
        return bytes;
    case QMetaType::QStringList: {
        const QStringList list = value.toStringList();
        append(bytes, Kind::List);
        append(bytes, quint32(std::min(list.size(), ListLimit)));
        for (const QString &text : list.first(std::min(list.size(), ListLimit)))
            append(bytes, text);
        return bytes;
    }
    case QMetaType::Int:
    case QMetaType::LongLong:
        append(bytes, Kind::Whole);
        append(bytes, qint64(value.toLongLong()));
        return bytes;
    case QMetaType::Double:
        append(bytes, Kind::Real);
        append(bytes, value.toDouble());
        return bytes;
    case QMetaType::QDateTime:
        append(bytes, Kind::Date);
        append(bytes, qint64(value.toDateTime().toMSecsSinceEpoch()));
        return bytes;
    case QMetaType::Bool:
        append(bytes, Kind::Truth);
        append(bytes, quint8(value.toBool()));
        return bytes;
    default:
        return std::nullopt;
    }
}

// Takes value by value off the front; once something is missing, all that follows is.
class Taker {
public:
    explicit Taker(QByteArrayView bytes)
        : _rest(bytes)
    {
    }
    bool fails() const { return _fails; }
    bool isAtEnd() const { return _rest.isEmpty(); }

    template <typename Number>
    Number number()
    {
        Number number {};
        if (has(sizeof number)) {
            std::memcpy(&number, _rest.data(), sizeof number);
            _rest = _rest.sliced(sizeof number);
        }
        return number;
    }
    QString text()
    {
        const auto count = qsizetype(number<quint32>());
        const qsizetype size = count * qsizetype(sizeof(QChar));
        if (count > AttributeLimit || !has(size)) {
            _fails = true;
            return {};
        }
        QString text(count, Qt::Uninitialized);
        std::memcpy(text.data(), _rest.data(), size_t(size));
        _rest = _rest.sliced(size);
        return text;
    }
    QVariant value()
    {
        switch (number<Kind>()) {
        case Kind::Text:
            return text();
        case Kind::List:
            return list();
        case Kind::Whole:
            return number<qint64>();
        case Kind::Real:
            return number<double>();
        case Kind::Date:
            return QDateTime::fromMSecsSinceEpoch(number<qint64>());
        case Kind::Truth:
            return number<quint8>() != 0;
        }
        _fails = true;
        return {};
    }

private:
    bool has(qsizetype size)
    {
        _fails = _fails || size > _rest.size();
        return !_fails;
    }
    QStringList list()
    {
        QStringList list;
        auto count = number<quint32>();
        _fails = _fails || count > ListLimit;
        for (; count > 0 && !_fails; --count)
            list.append(text());
        return list;
    }

    QByteArrayView _rest;
    bool _fails = false;
};

bool isIn(qint64 value, qint64 limit)
{
    return value >= 0 && value <= limit;
}

} // namespace

bool ReaderWords::isAnswer(const Answer &answer, const Question &question)
{
    using Outcome = ForeignFiles::Outcome;
    if (answer.number != question.number || answer.outcome > quint32(Outcome::Failed)
        || answer.attributesSize > AttributesLimit || answer.textSize > TextLimit)
        return false;
    if (question.work == Work::Read || Outcome(answer.outcome) != Outcome::Read)
        return answer.shownWidth == 0 && answer.shownHeight == 0;
    return isIn(answer.shownWidth, std::min(question.width, SideLimit))
        && isIn(answer.shownHeight, std::min(question.height, SideLimit)) && answer.shownWidth > 0
        && answer.shownHeight > 0 && answer.width > 0 && answer.height > 0
        && answer.attributesSize == 0 && answer.textSize == 0;
}

QByteArray ReaderWords::bytesOf(const QList<MetadataAttribute> &attributes)
{
    QByteArray all;
    qsizetype count = 0;
    for (const MetadataAttribute &attribute : attributes) {
        const auto value = ::bytesOf(attribute.value);
        QByteArray name;
        append(name, attribute.name);
        if (!value || all.size() + name.size() + value->size() > AttributesLimit)
            continue;
        if (++count > AttributeCountLimit)
            break;
        all += name + *value;
    }
    return all;
}

std::optional<QList<MetadataAttribute>> ReaderWords::attributesIn(QByteArrayView bytes)
{
    QList<MetadataAttribute> attributes;
    Taker taker(bytes);
    while (!taker.isAtEnd()) {
        const QString name = taker.text();
        const QVariant value = taker.value();
        if (taker.fails() || attributes.size() == AttributeCountLimit)
            return std::nullopt;
        attributes.append({ name, value });
    }
    return attributes;
}
