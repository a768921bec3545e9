#include "model/Entry.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/ListingData.h"
#include "settings/SizeText.h"

using namespace Qt::StringLiterals;

Entry::Entry(std::shared_ptr<const ListingData> listing, quint32 record)
    : _listing(std::move(listing))
    , _record(record)
{
}

bool Entry::isParent() const
{
    return _record == 0;
}

bool Entry::isFolder() const
{
    return _listing->records[_record].isFolder;
}

bool Entry::isLink() const
{
    return _listing->records[_record].isLink;
}

QIcon Entry::icon() const
{
    if (!_listing->options.showSpecifiedIcons) {
        if (isParent())
            return {};
        return isFolder() ? _listing->kinds->genericFolderIcon()
                          : _listing->kinds->genericDocumentIcon();
    }
    const ListingRecord &record = _listing->records[_record];
    if (isParent())
        return _listing->kinds->icon(PathText::lastComponent(PathText::parent(_listing->folder)),
                                     FileKind::Directory);
    return _listing->kinds->icon(name(), record.kind, record.isDangling);
}

QString Entry::name() const
{
    return FileName::fromBytes(_listing->name(_listing->records[_record]));
}

QString Entry::size() const
{
    const ListingRecord &record = _listing->records[_record];
    if (record.isDirectory)
        return u"--"_s;
    return record.hasStatus ? SizeText::getCalcFileSize(record.size) : u"0"_s;
}

std::optional<qint64> Entry::knownSize() const
{
    const ListingRecord &record = _listing->records[_record];
    return record.hasStatus && !record.isDirectory ? std::optional(record.size) : std::nullopt;
}

qint64 Entry::pureSize() const
{
    return _listing->records[_record].size;
}

QDateTime Entry::date() const
{
    const ListingRecord &record = _listing->records[_record];
    return record.hasStatus ? QDateTime::fromMSecsSinceEpoch(record.modified / 1'000'000)
                            : QDateTime();
}

QString Entry::type() const
{
    const ListingRecord &record = _listing->records[_record];
    return _listing->kinds->kindText(isParent() ? u"x"_s : name(), record.kind, record.isDangling);
}

QString Entry::path() const
{
    return isParent() ? _listing->folder : PathText::joined(_listing->folder, name());
}

int Entry::finderLabel() const
{
    return _listing->records[_record].label;
}

QByteArrayView Entry::nameBytes() const
{
    return _listing->name(_listing->records[_record]);
}

bool Entry::readsLike(const Entry &other) const
{
    const ListingRecord &a = _listing->records[_record];
    const ListingRecord &b = other._listing->records[other._record];
    // Finer than a date: a copy on a disk that keeps no nanoseconds still reads alike.
    if (nameBytes() != other.nameBytes() || a.hasStatus != b.hasStatus
        || a.modified / 1'000'000 != b.modified / 1'000'000)
        return false;
    // Texts are made only where the numbers do not say it already: 2,000 and 2,001 bytes read "2
    // KB".
    const bool sameSize = a.isDirectory == b.isDirectory && a.size == b.size;
    const bool sameKind = a.kind == b.kind && a.isDangling == b.isDangling;
    return (sameSize || size() == other.size()) && (sameKind || type() == other.type());
}

QVariantList Entry::entryAsArray() const
{
    return { icon(), name(), size(), date(), type(), path() };
}

QVariantList Entry::entryAsArrayWithoutIcon() const
{
    return { path(), name(), size(), date(), type() };
}
