#include "widgets/FileKinds.h"

#include "base/Localized.h"
#include "widgets/Icons.h"

#include <QMimeDatabase>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// A name without suffix is a key by itself, so a folder of such names could fill the memory.
constexpr qsizetype mostKeys = 4096;

// Keys that are no file name: a file's key starts with "." (its suffix) or "=" (its name).
constexpr auto folderKey = "folder"_L1;
constexpr auto documentKey = "document"_L1;
constexpr auto applicationKey = "application"_L1;
constexpr auto packageKey = "package"_L1;
constexpr auto brokenLinkKey = "broken"_L1;
constexpr auto inodePrefix = "inode/"_L1;

QStringView packageSuffix(QStringView name)
{
    static constexpr std::array suffixes { "app"_L1,    "pkg"_L1,       "mpkg"_L1, "bundle"_L1,
                                           "plugin"_L1, "framework"_L1, "rtfd"_L1, "AppDir"_L1 };
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0)
        return {};
    const QStringView suffix = name.sliced(dot + 1);
    const bool known = std::any_of(suffixes.begin(), suffixes.end(), [&](QLatin1StringView one) {
        return suffix.compare(one, Qt::CaseInsensitive) == 0;
    });
    return known ? suffix : QStringView();
}

// "gz" of "a.gz", "tar.gz" of "a.tar.gz", nothing of ".profile".
template <typename View>
View typeSuffix(View name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0 || dot == name.size() - 1)
        return {};
    constexpr auto tar = ".tar"_L1;
    if (dot > tar.size() && name.first(dot).endsWith(tar, Qt::CaseInsensitive))
        return name.sliced(dot - tar.size() + 1);
    return name.sliced(dot + 1);
}

// The type that a key stands for. A suffix is looked up behind a made-up name: a real one can have
// a type of its own ("CMakeLists.txt"), which would then be everybody's with that suffix.
QMimeType mimeType(const QString &key)
{
    const QMimeDatabase database;
    if (key == brokenLinkKey)
        return database.mimeTypeForName(u"inode/symlink"_s);
    if (key.startsWith(inodePrefix))
        return database.mimeTypeForName(key);
    if (key.startsWith(u'.'))
        return database.mimeTypeForFile(u'x' + key, QMimeDatabase::MatchExtension);
    if (key.startsWith(u'='))
        return database.mimeTypeForFile(key.sliced(1), QMimeDatabase::MatchExtension);
    return {};
}

QString textOf(const QString &key, const QMimeType &type)
{
    if (key == folderKey)
        return localized("Folder");
    if (key == applicationKey)
        return localized("Application");
    if (key == packageKey)
        return localized("Package");
    QString text = type.comment();
    if (!type.isValid() || type.isDefault() || text.isEmpty())
        return u"--"_s;
    text[0] = text.at(0).toUpper();
    return text;
}

QIcon iconOf(const QString &key, const QMimeType &type)
{
    if (key == folderKey)
        return themedIcon(u"folder"_s);
    if (key == documentKey)
        return themedIcon(u"text-x-generic"_s);
    if (key == applicationKey)
        return themedIcon(u"application-x-executable"_s);
    if (key == packageKey)
        return themedIcon(u"package-x-generic"_s);
    if (key == brokenLinkKey)
        return themedIcon(u"inode-symlink-broken"_s);
    if (!type.isValid() || type.isDefault())
        return themedIcon(u"application-x-generic"_s, u"text-x-generic"_s);
    return themedIcon(type.iconName(), type.genericIconName());
}

} // namespace

FileKinds::FileKinds() = default;

bool FileKinds::isPackageName(QStringView name)
{
    return !packageSuffix(name).isEmpty();
}

QByteArrayView FileKinds::suffix(QByteArrayView name)
{
    const auto found = typeSuffix(QLatin1StringView(name));
    return { found.data(), found.size() };
}

QString FileKinds::key(const QString &name, FileKind kind, bool dangling) const
{
    if (dangling)
        return brokenLinkKey;
    switch (kind) {
    case FileKind::Regular:
        break;
    case FileKind::Directory: {
        const QStringView suffix = packageSuffix(name);
        if (suffix.isEmpty())
            return folderKey;
        const bool application = suffix.compare("app"_L1, Qt::CaseInsensitive) == 0
            || suffix.compare("AppDir"_L1, Qt::CaseInsensitive) == 0;
        return application ? applicationKey : packageKey;
    }
    case FileKind::Symlink:
        return u"inode/symlink"_s;
    case FileKind::Fifo:
        return u"inode/fifo"_s;
    case FileKind::Socket:
        return u"inode/socket"_s;
    case FileKind::CharDevice:
        return u"inode/chardevice"_s;
    case FileKind::BlockDevice:
        return u"inode/blockdevice"_s;
    }
    const QStringView suffix = typeSuffix(QStringView(name));
    return suffix.isEmpty() ? u'=' + name : u'.' + suffix.toString();
}

QString FileKinds::kindText(const QString &name, FileKind kind, bool dangling) const
{
    const std::lock_guard lock(_mutex);
    return known(key(name, kind, dangling)).text;
}

QString FileKinds::kindTextByContent(const QString &name, const QByteArray &start)
{
    return textOf({}, QMimeDatabase().mimeTypeForFileNameAndData(name, start));
}

QIcon FileKinds::icon(const QString &name, FileKind kind, bool dangling) const
{
    return iconOfKey(key(name, kind, dangling));
}

QIcon FileKinds::genericFolderIcon() const
{
    return iconOfKey(folderKey);
}

QIcon FileKinds::genericDocumentIcon() const
{
    return iconOfKey(documentKey);
}

FileKinds::Known &FileKinds::known(const QString &key) const
{
    if (const auto found = _known.find(key); found != _known.end())
        return *found;
    if (_known.size() >= mostKeys)
        _known.clear();
    const QMimeType type = mimeType(key);
    return *_known.insert(key, { type, textOf(key, type), {} });
}

QIcon FileKinds::iconOfKey(const QString &key) const
{
    const std::lock_guard lock(_mutex);
    Known &one = known(key);
    if (one.icon.isNull())
        one.icon = iconOf(key, one.type);
    return one.icon;
}
