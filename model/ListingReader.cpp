#include "model/Listing.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/HiddenRule.h"
#include "files/MountTable.h"
#include "model/FileQueries.h"
#include "model/ListingData.h"

#include <atomic>
#include <dirent.h>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr size_t ChunkSize = 1000; // records; a thread for fewer costs more than it saves
constexpr size_t MostThreads = 4; // more wait for the same disk
constexpr auto ServerPatience = 3s;

// A server that is gone keeps every call waiting; the window must not wait with it.
bool answers(const QString &folder)
{
    const MountTable table = MountTable::current();
    const Mount *mount = table.mountOf(folder);
    if (!mount || !MountTable::isNetwork(*mount))
        return true;
    auto answered = std::make_shared<std::promise<void>>();
    auto future = answered->get_future();
    std::thread([folder, answered] { // worker thread
        fileStatus(folder, Links::Follow);
        answered->set_value();
    })
        .detach();
    return future.wait_for(ServerPatience) == std::future_status::ready;
}

struct Reading {
    DirectoryReader reader;
    const ListingOptions &options;
    QByteArray folder; // with a slash at its end
    HiddenRule hiddenRule;
    bool marks = true; // whether the device keeps attributes at all
    std::string names; // each with a NUL behind it, for the system calls
    std::vector<ListingRecord> records;
    std::vector<unsigned char> types; // DT_*, by record
    std::vector<char> hidden; // by record

    void readNames();
    void look(size_t first, size_t last, const QByteArray &folderOfNames);
    void lookAtAll();
};

void Reading::readNames()
{
    reader.read([&](const DirectoryItem &item) {
        if (!options.showHiddenFiles && hiddenRule.hidesName(item.name))
            return true;
        ListingRecord record;
        record.nameOffset = quint32(names.size());
        record.nameLength = quint16(item.name.size());
        names.append(item.name.data(), size_t(item.name.size())).push_back('\0');
        records.push_back(record);
        types.push_back(item.type);
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
        const auto status = reader.status(name, links);
        if (status) {
            record.hasStatus = true;
            record.kind = status->kind;
            record.modified = status->modified;
            record.isDirectory = status->kind == FileKind::Directory;
            if (status->kind == FileKind::Symlink) {
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
        record.isFolder = record.kind == FileKind::Directory
            && !FileKinds::isPackageName(
                              FileName::fromBytes({ name, qsizetype(record.nameLength) }));
        if (!marks || !status)
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

ListingRecord parentRecord(const QString &folder, const ListingOptions &options, bool reachable)
{
    ListingRecord record;
    record.kind = FileKind::Directory;
    record.isDirectory = true;
    record.isFolder = true;
    record.nameLength = 2;
    if (!reachable)
        return record;
    if (const auto status =
            fileStatus(folder, options.traverseLinks ? Links::Follow : Links::NoFollow)) {
        record.hasStatus = true;
        record.modified = status->modified;
    }
    return record;
}

} // namespace

Listing Listing::read(const QString &folder, const ListingOptions &options, const FileKinds &kinds)
{
    auto data = std::make_shared<ListingData>();
    data->folder = folder;
    data->kinds = &kinds;
    data->specifiedIcons = options.showSpecifiedIcons;
    data->generation = ListingData::nextGeneration();

    Reading reading { {}, options, FileName::toBytes(folder), HiddenRule(folder) };
    if (!reading.folder.endsWith('/'))
        reading.folder += '/';
    reading.names = std::string("..\0", 3);
    const bool reachable = answers(folder);
    if (reachable && !reading.reader.open(folder)) {
        const auto status = fileStatus(folder, Links::Follow);
        reading.marks = status && FileFlags::devicePossiblyHasMarks(status->identity.device);
        reading.readNames();
        reading.lookAtAll();
    }
    data->records.reserve(reading.records.size() + 1);
    data->records.push_back(parentRecord(folder, options, reachable));
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
