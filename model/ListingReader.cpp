#include "model/Listing.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/HiddenRule.h"
#include "files/MountTable.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/ListingData.h"

#include <QSet>

#include <atomic>
#include <dirent.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr size_t ChunkSize = 1000; // records; a thread for fewer costs more than it saves
constexpr size_t MostThreads = 4; // more wait for the same disk
constexpr qint64 Counted = 8; // items between two counts

struct Reading {
    DirectoryReader reader;
    const ListingOptions &options;
    QByteArray folder; // with a slash at its end
    HiddenRule hiddenRule;
    WaitingProgress *progress; // may be missing
    MountTable mounts = MountTable::current();
    QString place {}; // the folder's own path, links resolved; "" where no link is to be distrusted
    QSet<QByteArray> slowMounts {}; // names of mount points that are not to be asked
    bool marks = true; // whether the device keeps attributes at all
    std::error_code error {}; // that ended the reading early
    std::string names; // each with a NUL behind it, for the system calls
    std::vector<ListingRecord> records;
    std::vector<unsigned char> types; // DT_*, by record
    std::vector<char> hidden; // by record

    std::error_code open(const QString &path);
    void readNames();
    bool mayHang(size_t record) const;
    QString nameOf(const ListingRecord &record) const
    {
        return FileName::fromBytes({ names.data() + record.nameOffset, record.nameLength });
    }
    void look(size_t first, size_t last, const QByteArray &folderOfNames);
    void lookAtAll();
};

std::error_code Reading::open(const QString &path)
{
    if (const auto error = reader.open(path))
        return error;
    const auto status = statusOf(reader.descriptor());
    marks = status && FileFlags::devicePossiblyHasMarks(status->identity.device);
    if (!mounts.hasSlow())
        return {};
    place = linkTarget(u"/proc/self/fd/%1"_s.arg(reader.descriptor())).value_or(path);
    for (const Mount &mount : mounts.mounts()) {
        if (PathText::parent(mount.point) == place
            && !mounts.isLocal(*mounts.mountOf(mount.point))) // the topmost on the point
            slowMounts.insert(FileName::toBytes(PathText::lastComponent(mount.point)));
    }
    // On a slow mount everything is asked of it anyway, its links too.
    if (const Mount *own = mounts.mountOf(place); own && !mounts.isLocal(*own))
        place.clear();
    return {};
}

// Whether a link leads to where another machine or program would have to answer for it.
bool Reading::mayHang(size_t record) const
{
    if (place.isEmpty() || (types[record] != DT_LNK && types[record] != DT_UNKNOWN))
        return false;
    return mounts.slowMountOnTheWay(place, nameOf(records[record]));
}

void Reading::readNames()
{
    error = reader.read([&](const DirectoryItem &item) {
        if (!options.showHiddenFiles && hiddenRule.hidesName(item.name))
            return true;
        ListingRecord record;
        record.nameOffset = quint32(names.size());
        record.nameLength = quint16(item.name.size());
        names.append(item.name.data(), size_t(item.name.size())).push_back('\0');
        records.push_back(record);
        types.push_back(item.type);
        if (progress && records.size() % ChunkSize == 0)
            *progress = qint64(records.size());
        return true;
    });
}

// Looks at the items of one chunk; the threads share nothing that they write. What stands before
// the names for calls that take a path: nothing in the folder itself.
void Reading::look(size_t first, size_t last, const QByteArray &folderOfNames) // worker thread
{
    QByteArray path = folderOfNames;
    const Links links = options.traverseLinks ? Links::Follow : Links::NoFollow;
    for (size_t i = first; i < last; ++i) {
        ListingRecord &record = records[i];
        const char *name = names.data() + record.nameOffset;
        if (progress && i % Counted == 0)
            progress->fetch_add(Counted, std::memory_order_relaxed);
        if (slowMounts.contains(QByteArray::fromRawData(name, record.nameLength))) {
            record.kind = FileKind::Directory;
            record.isDirectory = true;
            record.isFolder = !FileKinds::isPackageName(nameOf(record));
            continue;
        }
        const bool follows = !mayHang(i);
        const auto status = reader.status(name, follows ? links : Links::NoFollow);
        if (status) {
            record.hasStatus = true;
            record.kind = status->kind;
            record.modified = status->modified;
            record.isDirectory = status->kind == FileKind::Directory;
            if (status->kind == FileKind::Symlink && follows) {
                // Attributes are the link's own; whether it opens as a folder is its target's
                // matter.
                const auto target = reader.status(name, Links::Follow);
                record.isDirectory = target && target->kind == FileKind::Directory;
            }
            record.size = record.isDirectory ? 0 : status->size;
        } else if (types[i] == DT_LNK
                   || (types[i] == DT_UNKNOWN && reader.status(name, Links::NoFollow))) {
            record.kind = FileKind::Symlink;
            record.isDangling = true;
        }
        record.isLink = types[i] == DT_LNK || record.kind == FileKind::Symlink;
        record.isFolder =
            record.kind == FileKind::Directory && !FileKinds::isPackageName(nameOf(record));
        if (!marks || !status || !follows) // marks are those of a link's target
            continue;
        path.resize(folderOfNames.size());
        path.append(name, record.nameLength);
        const FileFlags::Marks found = FileFlags::marks(path.constData());
        record.label = quint8(FileQueries::labelOfBits(found.labelBits));
        hidden[i] = HiddenRule::hides(found);
    }
}

void Reading::lookAtAll()
{
    hidden.assign(records.size(), false);
    if (progress)
        *progress = 0;
    const size_t chunks = (records.size() + ChunkSize - 1) / ChunkSize;
    std::atomic<size_t> nextChunk = 0;
    const auto lookAtChunks = [&](const QByteArray &folderOfNames) {
        for (size_t chunk = 0; (chunk = nextChunk++) < chunks;)
            look(chunk * ChunkSize, std::min((chunk + 1) * ChunkSize, records.size()),
                 folderOfNames);
    };
    if (chunks < 2)
        return lookAtChunks(folder);
    // The caller only waits: threads of our own can stand in the folder, which spares the system
    // the way there for each name.
    std::vector<std::thread> threads(
        std::min(chunks, std::clamp<size_t>(std::thread::hardware_concurrency(), 1, MostThreads)));
    for (std::thread &thread : threads)
        thread = std::thread([&] { lookAtChunks(reader.workHere() ? QByteArray() : folder); });
    for (std::thread &thread : threads)
        thread.join();
}

ListingRecord parentRecord(const std::optional<FileStatus> &folder)
{
    ListingRecord record;
    record.kind = FileKind::Directory;
    record.isDirectory = true;
    record.isFolder = true;
    record.nameLength = 2;
    if (folder) {
        record.hasStatus = true;
        record.modified = folder->modified;
    }
    return record;
}

} // namespace

Listing Listing::read(const QString &folder, const ListingOptions &options, const FileKinds &kinds,
                      WaitingProgress *progress)
{
    auto data = std::make_shared<ListingData>();
    data->folder = folder;
    data->kinds = &kinds;
    data->specifiedIcons = options.showSpecifiedIcons;
    data->generation = ListingData::nextGeneration();

    Reading reading { {}, options, FileName::toBytes(folder), HiddenRule(folder), progress };
    if (!reading.folder.endsWith('/'))
        reading.folder += '/';
    reading.names = std::string("..\0", 3);
    data->error = reading.open(folder);
    if (!data->error) {
        reading.readNames();
        data->error = reading.error;
        reading.lookAtAll();
    }
    data->records.reserve(reading.records.size() + 1);
    data->records.push_back(
        parentRecord(fileStatus(folder, options.traverseLinks ? Links::Follow : Links::NoFollow)));
    for (const bool folders : { true, false }) {
        for (size_t i = 0; i < reading.records.size(); ++i) {
            if (reading.records[i].isFolder == folders
                && (options.showHiddenFiles || !reading.hidden[i]))
                data->records.push_back(reading.records[i]);
        }
    }
    data->names = std::make_shared<const std::string>(std::move(reading.names));
    return Listing(std::move(data));
}
