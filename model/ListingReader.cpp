#include "model/ItemLook.h"
#include "model/Listing.h"
#include "model/ListingData.h"

#include <atomic>
#include <thread>

namespace {

constexpr size_t ChunkSize = 1000; // records; a thread for fewer costs more than it saves
constexpr size_t MostThreads = 4; // more wait for the same disk
constexpr qint64 Counted = 8; // items between two counts

struct Reading {
    ItemLook items;
    WaitingProgress *progress; // may be missing
    std::error_code error {}; // that ended the reading early
    std::string names {}; // each with a NUL behind it, for the system calls
    std::vector<ListingRecord> records {};
    std::vector<unsigned char> types {}; // DT_*, by record
    std::vector<char> listed {}; // by record

    void readNames();
    void look(size_t first, size_t last, const QByteArray &folderOfNames);
    void lookAtAll();
};

void Reading::readNames()
{
    error = items.reader().read([&](const DirectoryItem &item) {
        if (items.hidesName(item.name))
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

// Looks at the items of one chunk; the threads share nothing that they write.
void Reading::look(size_t first, size_t last, const QByteArray &folderOfNames) // worker thread
{
    for (size_t i = first; i < last; ++i) {
        if (progress && i % Counted == 0)
            progress->fetch_add(Counted, std::memory_order_relaxed);
        listed[i] =
            items.look(names.data() + records[i].nameOffset, types[i], records[i], folderOfNames);
    }
}

void Reading::lookAtAll()
{
    listed.assign(records.size(), false);
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
        return lookAtChunks(items.folderOfNames());
    // The caller only waits: threads of our own can stand in the folder, which spares the system
    // the way there for each name.
    std::vector<std::thread> threads(
        std::min(chunks, std::clamp<size_t>(std::thread::hardware_concurrency(), 1, MostThreads)));
    for (std::thread &thread : threads)
        thread = std::thread([&] {
            lookAtChunks(items.reader().workHere() ? QByteArray() : items.folderOfNames());
        });
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace

Listing Listing::read(const QString &folder, const ListingOptions &options, const FileKinds &kinds,
                      WaitingProgress *progress, FolderWatch *watch)
{
    auto data = std::make_shared<ListingData>();
    data->folder = folder;
    data->kinds = &kinds;
    data->options = options;
    data->generation = ListingData::nextGeneration();

    Reading reading { ItemLook(folder, options), progress };
    reading.names = std::string("..\0", 3);
    data->error = reading.items.open(watch);
    if (!data->error) {
        reading.readNames();
        data->error = reading.error;
        reading.lookAtAll();
    }
    data->records.reserve(reading.records.size() + 1);
    data->records.push_back(reading.items.parent());
    for (const bool folders : { true, false }) {
        for (size_t i = 0; i < reading.records.size(); ++i) {
            if (reading.records[i].isFolder == folders && reading.listed[i])
                data->records.push_back(reading.records[i]);
        }
    }
    data->arenas.push_back(std::make_shared<const std::string>(std::move(reading.names)));
    return Listing(std::move(data));
}
