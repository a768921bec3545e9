#include "search/ItemAttributes.h"

#include "files/AccountLookUp.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "search/HitCheck.h"
#include "search/IndexFile.h"
#include "search/StoredDocument.h"
#include "search/UserAttributes.h"

#include <QDateTime>
#include <QMimeDatabase>
#include <QTimeZone>

#include <algorithm>
#include <grp.h>
#include <pwd.h>

using namespace Qt::StringLiterals;

namespace {

// As much as a person looks at in one line of a table.
constexpr qsizetype LongestText = 2000; // characters
constexpr auto Content = "kMDItemTextContent"_L1;

QDateTime dateOf(qint64 nanoseconds)
{
    return QDateTime::fromMSecsSinceEpoch(nanoseconds / 1'000'000);
}

QMimeType typeOf(const QString &name, FileKind kind)
{
    const QMimeDatabase database;
    switch (kind) {
    case FileKind::Regular:
        return database.mimeTypeForFile(FileName::shown(name), QMimeDatabase::MatchExtension);
    case FileKind::Directory:
        return database.mimeTypeForName(u"inode/directory"_s);
    case FileKind::Symlink:
        return database.mimeTypeForName(u"inode/symlink"_s);
    case FileKind::Fifo:
        return database.mimeTypeForName(u"inode/fifo"_s);
    case FileKind::Socket:
        return database.mimeTypeForName(u"inode/socket"_s);
    case FileKind::CharDevice:
        return database.mimeTypeForName(u"inode/chardevice"_s);
    case FileKind::BlockDevice:
        return database.mimeTypeForName(u"inode/blockdevice"_s);
    }
    return {};
}

class Attributes {
public:
    void add(QLatin1StringView name, const QVariant &value)
    {
        if (value.isValid() && value != QVariant(QString()) && value != QVariant(QStringList()))
            list.append({ name, value });
    }
    bool has(const QString &name) const
    {
        return std::ranges::any_of(
            list, [&name](const MetadataAttribute &one) { return one.name == name; });
    }

    QList<MetadataAttribute> list;
};

void addOwner(const FileStatus &status, Attributes &attributes)
{
    QString owner;
    lookUpAccount(&::getpwuid_r, status.owner,
                  [&owner](const passwd &entry) { owner = QString::fromUtf8(entry.pw_name); });
    QString group;
    lookUpAccount(&::getgrgid_r, status.group,
                  [&group](const ::group &entry) { group = QString::fromUtf8(entry.gr_name); });
    attributes.add("kMDItemFSOwnerUserID"_L1, qint64(status.owner));
    attributes.add("kMDItemFSOwnerUserName"_L1, owner);
    attributes.add("kMDItemFSOwnerGroupID"_L1, qint64(status.group));
    attributes.add("kMDItemFSOwnerGroupName"_L1, group);
}

// What the file system says.
void addStatus(const QString &path, const FileStatus &status, Attributes &attributes)
{
    const QString name = PathText::lastComponent(path);
    const QMimeType type = typeOf(name, status.kind);
    attributes.add("kMDItemDisplayName"_L1, name);
    attributes.add("kMDItemPath"_L1, path);
    attributes.add("kMDItemFSName"_L1, name);
    attributes.add("kMDItemKind"_L1, type.comment());
    attributes.add("kMDItemContentType"_L1, type.name());
    attributes.add("kMDItemContentTypeTree"_L1, QStringList(type.name()) + type.allAncestors());
    if (status.kind == FileKind::Regular)
        attributes.add("kMDItemFSSize"_L1, status.size);
    if (status.created)
        attributes.add("kMDItemFSCreationDate"_L1, dateOf(*status.created));
    attributes.add("kMDItemFSContentChangeDate"_L1, dateOf(status.modified));
    attributes.add("kMDItemContentModificationDate"_L1, dateOf(status.modified));
    attributes.add("kMDItemAttributeChangeDate"_L1, dateOf(status.changed));
    addOwner(status, attributes);
    if (const auto target = linkTarget(path))
        attributes.add("kMDItemFSLinkTarget"_L1, *target);
    attributes.list += userAttributes(FileName::toBytes(path));
}

// The id of a folder in the index; 0 when there is none.
qint64 folderId(Database &database, const QString &folder)
{
    const QString home = IndexFile::homePath();
    if (folder == home)
        return IndexFile::Home;
    const QString above = home == u'/' ? home : home + u'/';
    if (!folder.startsWith(above))
        return 0;
    Statement place(database, "SELECT id FROM folder WHERE parent = ? AND name = ?");
    qint64 id = IndexFile::Home;
    const QStringList names = folder.sliced(above.size()).split(u'/');
    for (const QString &name : names) {
        const QByteArray bytes = FileName::toBytes(name);
        id = place.bind(1, id).bindBytes(2, bytes).next() ? place.number(0) : 0;
        place.reset();
        if (id == 0)
            return 0;
    }
    return id;
}

// What was read in it.
void addDocument(Database &database, const QString &path, Attributes &attributes)
{
    const QString folder = PathText::parent(path);
    const QByteArray name = FileName::toBytes(PathText::lastComponent(path));
    Statement document(database,
                       "SELECT size, modified, changed, inode, attributes, text FROM document"
                       " WHERE folder = ? AND name = ?");
    if (!document.bind(1, folderId(database, folder)).bindBytes(2, name).next())
        return;
    const PackedItem::Stamp stamp { .size = document.number(0),
                                    .modified = document.number(1),
                                    .changed = document.number(2),
                                    .inode = quint64(document.number(3)) };
    if (!HitCheck().isUnchanged(FileName::toBytes(folder), name, stamp))
        return;
    const auto stored = StoredDocument::attributesOf(document.bytes(4));
    for (const MetadataAttribute &attribute : stored) {
        if (!attributes.has(attribute.name))
            attributes.list.append(attribute);
    }
    QByteArray text;
    StoredDocument::textOf(document.bytes(5), text);
    QString shown = QString::fromUtf8(text.first(std::min(text.size(), 4 * LongestText)));
    if (shown.size() > LongestText)
        shown = shown.first(LongestText) + u'…';
    attributes.add(Content, shown);
}

} // namespace

QList<MetadataAttribute> itemAttributes(const QString &path, const QString &index)
{
    Attributes attributes;
    const auto status = fileStatus(path, Links::NoFollow);
    if (!status)
        return {};
    addStatus(path, *status, attributes);
    Database database;
    if (IndexFile::openForReading(index, database) == IndexFile::State::Good)
        addDocument(database, path, attributes);
    return attributes.list;
}
