#pragma once

#include "bench/LargeFolder.h"

#include <QByteArray>

#include <fts.h>

// A tree of 200,000 files.
inline void makeManyFiles(const QByteArray &tree)
{
    constexpr int Folders = 400;
    constexpr int FilesPerFolder = 500;
    mkdir(tree, 0755);
    for (int folder = 0; folder < Folders; ++folder)
        fillFolder(tree + '/' + QByteArray::number(folder), FilesPerFolder,
                   [](int number) { return std::string(size_t(number % 100), 'x'); });
}

// Looks at each file below the folder, and adds up their sizes.
inline qint64 bareWalk(const QByteArray &folder)
{
    QByteArray root = folder;
    char *roots[] = { root.data(), nullptr };
    FTS *walk = fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    qint64 total = 0;
    while (const FTSENT *entry = fts_read(walk))
        if (entry->fts_info == FTS_F)
            total += entry->fts_statp->st_size;
    fts_close(walk);
    return total;
}
