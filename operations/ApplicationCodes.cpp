#include "operations/ApplicationCodes.h"

#include "files/DesktopEntry.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "files/SmallFile.h"
#include "settings/PropertyList.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MostBytes = 1024 * 1024; // what is read of a file
constexpr qsizetype CodeLength = 4;

bool isBundle(const QString &application)
{
    return PathText::extension(application) == u"app";
}

QVariantMap informationOf(const QString &bundle)
{
    return PropertyList::read(startOfFile(bundle + u"/Contents/Info.plist"_s, MostBytes))
        .value_or(QVariantMap());
}

QString statedBy(const QString &entry, QByteArrayView key)
{
    if (PathText::extension(entry) != u"desktop")
        return {};
    const QByteArray value =
        DesktopEntry::value(startOfFile(entry, MostBytes), key).value_or(QByteArray());
    return value.size() == CodeLength ? QString::fromUtf8(value) : QString();
}

// Letters and digits, as such codes are by custom.
QString madeFrom(const QString &name)
{
    static constexpr char Letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";
    constexpr int Count = sizeof Letters - 1; // divides 256
    const QByteArray hash =
        QCryptographicHash::hash(FileName::toBytes(name), QCryptographicHash::Sha256);
    QString code;
    for (qsizetype i = 0; i < CodeLength; ++i)
        code += QLatin1Char(Letters[quint8(hash[i]) % Count]);
    return code;
}

} // namespace

std::optional<QString> ApplicationCodes::documentType(const QString &application)
{
    if (!isBundle(application)) {
        const QString stated = statedBy(application, "X-Twinleaf-OSType");
        return stated.isEmpty() ? madeFrom(PathText::lastComponent(application) + u"/document"_s)
                                : stated;
    }
    const auto kinds = informationOf(application).value(u"CFBundleDocumentTypes"_s).toList();
    for (const QVariant &kind : kinds) {
        const QVariant types = kind.toMap().value(u"CFBundleTypeOSTypes"_s);
        if (!types.isValid())
            continue;
        const QVariantList list = types.toList();
        return list.isEmpty() ? std::nullopt : std::optional(list.first().toString());
    }
    return std::nullopt;
}

std::optional<QString> ApplicationCodes::signature(const QString &application)
{
    if (!isBundle(application)) {
        const QString stated = statedBy(application, "X-Twinleaf-Signature");
        return stated.isEmpty() ? madeFrom(PathText::lastComponent(application)) : stated;
    }
    const QVariant stated = informationOf(application).value(u"CFBundleSignature"_s);
    return stated.isValid() ? std::optional(stated.toString()) : std::nullopt;
}
