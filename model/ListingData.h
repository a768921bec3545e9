#pragma once

#include "model/Listing.h"
#include "model/ListingOptions.h"
#include "widgets/FileKinds.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <string>
#include <system_error>
#include <vector>

// What a listing keeps of one item: 32 bytes and its name in an arena.
struct ListingRecord {
    qint64 size = 0; // bytes
    qint64 modified = 0; // nanoseconds since 1970
    quint32 nameOffset = 0;
    quint16 nameLength = 0; // bytes
    FileKind kind = FileKind::Regular; // of the link's target where links are followed
    quint8 label = 0; // label index, 0 to 7
    bool hasStatus = false; // size and date are known
    bool isDirectory = false; // a folder or package, links followed
    bool isFolder = false; // its kind text is "Folder"
    bool isLink = false; // a symbolic one
    bool isDangling = false;
    quint16 arena = 0; // of the listing's, which holds the name
    friend bool operator==(const ListingRecord &, const ListingRecord &) = default;
};
static_assert(sizeof(ListingRecord) == 32);

// The storage behind listings and entries. Never changes once a listing shows it; a sorted listing
// shares the names and has its own order of records, one with changes adds an arena for new names.
struct ListingData {
    QString folder;
    std::vector<std::shared_ptr<const std::string>> arenas; // the raw bytes of all names
    std::vector<ListingRecord> records; // record 0 is ".."
    const FileKinds *kinds = nullptr; // the application's
    ListingOptions options; // it was read by
    std::optional<SortOrder> order; // that the records are in
    std::error_code error {}; // why it could not be read
    quint64 generation = 0;

    QByteArrayView name(const ListingRecord &record) const
    {
        return { arenas[record.arena]->data() + record.nameOffset, qsizetype(record.nameLength) };
    }
    // The same listing without its rows.
    ListingData emptied() const
    {
        return { folder, arenas, {}, kinds, options, order, error, nextGeneration() };
    }
    static quint64 nextGeneration();
};
