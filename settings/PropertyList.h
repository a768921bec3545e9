#pragma once

#include <QByteArray>
#include <QVariantMap>

#include <optional>

// Property lists as QVariant: strings, booleans, qlonglong, double, QByteArray, QDateTime,
// QVariantList and QVariantMap, nested at most 100 deep; dates by the second, in years of four
// digits. Strings and keys may hold what XML cannot, such as control characters and the lone
// surrogates of files/FileName.
namespace PropertyList {

// The dictionary that the bytes hold, an XML property list; nothing when they are none, or hold
// anything besides.
std::optional<QVariantMap> read(const QByteArray &bytes);

QByteArray toXml(const QVariantMap &dictionary);

// The value as it would be read back ("int" becomes qlonglong, and so on); invalid for a type that
// a property list does not have.
QVariant normalized(const QVariant &value);

} // namespace PropertyList
