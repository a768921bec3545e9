#pragma once

#include <QByteArray>
#include <QVariantMap>

#include <optional>

// Property lists as QVariant: strings, booleans, qlonglong, double, QByteArray, QDateTime,
// QVariantList and QVariantMap. Strings and keys may hold what XML cannot, such as control
// characters and the lone surrogates of platform/FileName.
namespace PropertyList {

// The dictionary that the bytes hold; nothing when they are no whole property list or another root.
std::optional<QVariantMap> read(const QByteArray &bytes);

QByteArray toXml(const QVariantMap &dictionary);

// The value as it would be read back ("int" becomes qlonglong, and so on); invalid for a type that
// a property list does not have.
QVariant normalized(const QVariant &value);

} // namespace PropertyList
