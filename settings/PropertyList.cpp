#include "settings/PropertyList.h"

#include "files/FileName.h"

#include <QDateTime>
#include <QTimeZone>

#include <clocale>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>

namespace {

constexpr char16_t Escape = 0xEF00; // plus a byte; two of them stand for one UTF-16 unit
constexpr qint64 DateEpoch = 978'307'200; // 2001-01-01 in seconds since 1970

struct FreeNode {
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

// The library reads and prints numbers in the locale of the thread, which may have decimal commas.
class PlainNumbers {
public:
    PlainNumbers()
        : _plain(newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE)))
        , _before(uselocale(_plain))
    {
    }
    ~PlainNumbers()
    {
        uselocale(_before);
        freelocale(_plain);
    }
    PlainNumbers(const PlainNumbers &) = delete;
    PlainNumbers &operator=(const PlainNumbers &) = delete;

private:
    locale_t _plain;
    locale_t _before;
};

bool isEscape(QChar c)
{
    return (c.unicode() & 0xFF00) == Escape;
}

bool needsEscape(char16_t c)
{
    return (c < 0x20 && c != '\t' && c != '\n') || isEscape(c) || c >= 0xFFFE;
}

QByteArray encoded(const QString &text)
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
    return plain.toUtf8();
}

QString decoded(const char *bytes)
{
    const QString plain = FileName::fromBytes(QByteArrayView(bytes));
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

QVariant valueOf(plist_t node);

QVariantMap dictionaryOf(plist_t node)
{
    QVariantMap map;
    plist_dict_iter step = nullptr;
    plist_dict_new_iter(node, &step);
    for (;;) {
        char *key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, step, &key, &item);
        if (!item)
            break;
        if (const QVariant value = valueOf(item); value.isValid())
            map.insert(decoded(key ? key : ""), value);
        std::free(key);
    }
    std::free(step);
    return map;
}

QVariantList arrayOf(plist_t node)
{
    QVariantList list;
    plist_array_iter step = nullptr;
    plist_array_new_iter(node, &step);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, step, &item);
        if (!item)
            break;
        if (const QVariant value = valueOf(item); value.isValid())
            list.append(value);
    }
    std::free(step);
    return list;
}

QVariant valueOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return qlonglong(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        char *value = nullptr;
        plist_get_string_val(node, &value);
        const QString text = decoded(value ? value : "");
        std::free(value);
        return text;
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char *value = plist_get_data_ptr(node, &length);
        return QByteArray(value, qsizetype(length));
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t micros = 0;
        plist_get_date_val(node, &seconds, &micros);
        return QDateTime::fromSecsSinceEpoch(DateEpoch + seconds, QTimeZone::utc());
    }
    case PLIST_ARRAY:
        return arrayOf(node);
    case PLIST_DICT:
        return dictionaryOf(node);
    default:
        return {};
    }
}

// Of a normalized value.
plist_t nodeOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return plist_new_bool(value.toBool());
    case QMetaType::LongLong:
        return plist_new_uint(uint64_t(value.toLongLong()));
    case QMetaType::Double:
        return plist_new_real(value.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return plist_new_data(bytes.constData(), uint64_t(bytes.size()));
    }
    case QMetaType::QDateTime:
        return plist_new_date(int32_t(value.toDateTime().toSecsSinceEpoch() - DateEpoch), 0);
    case QMetaType::QVariantList: {
        plist_t array = plist_new_array();
        const QVariantList items = value.toList();
        for (const QVariant &item : items)
            plist_array_append_item(array, nodeOf(item));
        return array;
    }
    case QMetaType::QVariantMap: {
        plist_t dictionary = plist_new_dict();
        const QVariantMap items = value.toMap();
        for (auto item = items.cbegin(); item != items.cend(); ++item)
            plist_dict_set_item(dictionary, encoded(item.key()).constData(), nodeOf(item.value()));
        return dictionary;
    }
    default:
        return plist_new_string(encoded(value.toString()).constData());
    }
}

} // namespace

std::optional<QVariantMap> PropertyList::read(const QByteArray &bytes)
{
    const PlainNumbers plainNumbers;
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    const Node owner(root);
    if (!root || plist_get_node_type(root) != PLIST_DICT)
        return std::nullopt;
    return dictionaryOf(root);
}

QByteArray PropertyList::toXml(const QVariantMap &dictionary)
{
    const PlainNumbers plainNumbers;
    const Node root(nodeOf(dictionary));
    char *xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    QByteArray bytes(xml, qsizetype(length));
    plist_to_xml_free(xml);
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
    case QMetaType::QDateTime:
        return value;
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
