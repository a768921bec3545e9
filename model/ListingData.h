#pragma once

#include "widgets/FileKinds.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <string>
#include <system_error>
#include <vector>

// What a listing keeps of one item: 32 bytes and its name in the arena.
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
};

// The storage behind listings and entries. Never changes once a listing shows it; a sorted listing
// shares the names and has its own order of records.
struct ListingData {
    QString folder;
    std::shared_ptr<const std::string> names; // the raw bytes of all names
    std::vector<ListingRecord> records; // record 0 is ".."
    const FileKinds *kinds = nullptr; // the application's
    bool specifiedIcons = true;
    std::error_code error {}; // why it could not be read
    quint64 generation = 0;

    QByteArrayView name(const ListingRecord &record) const
    {
        return { names->data() + record.nameOffset, qsizetype(record.nameLength) };
    }
    // The same listing in another order.
    ListingData inOrder(std::vector<ListingRecord> sorted) const
    {
        return { folder, names, std::move(sorted), kinds, specifiedIcons, error, nextGeneration() };
    }
    static quint64 nextGeneration();
};
