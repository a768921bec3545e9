#pragma once

#include "bench/SearchText.h"

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// The tree of the figures of searching: 200,000 text files in 10,000 folders. 200 of the files have
// the word, which is nowhere else: every second of them in its name, the others in their text.
namespace SearchTree {

constexpr int Folders = 10000; // a hundred, with 99 in each
constexpr int FilesPerFolder = 20;
constexpr int Files = Folders * FilesPerFolder;
constexpr int FilesWithWord = 200;
constexpr char Word[] = "Twinleafword";
constexpr size_t TextSize = 200; // bytes of each file

inline void demand(bool good, const QByteArray &what)
{
    if (good)
        return;
    std::perror(what.constData());
    std::exit(1);
}

inline void makeFile(int folder, int number)
{
    constexpr int Step = Files / FilesWithWord;
    const bool hasWord = number % Step == 0;
    const bool inName = hasWord && number / Step % 2 == 0;
    char name[64];
    std::snprintf(name, sizeof name, "%s %08x.txt", inName ? Word : "Item",
                  unsigned(number) * 2654435761U);
    std::string text = SearchText(uint64_t(number) + 7).bytes(TextSize);
    if (hasWord && !inName)
        text += std::string(Word) + ".\n";
    const int file = openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    demand(file >= 0 && write(file, text.data(), text.size()) == ssize_t(text.size()), name);
    close(file);
}

// Makes the folder and all in it. `files`: less than the whole tree, for a quick look.
inline void make(const QByteArray &tree, int files = Files)
{
    demand(mkdir(tree, 0755) == 0, tree);
    for (int folder = 0; folder * FilesPerFolder < files; ++folder) {
        QByteArray path = tree + "/Area " + QByteArray::number(folder / 100);
        if (folder % 100 == 0)
            demand(mkdir(path, 0755) == 0, path);
        else {
            path += "/Folder " + QByteArray::number(folder % 100);
            demand(mkdir(path, 0755) == 0, path);
        }
        const int opened = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        demand(opened >= 0, path);
        for (int file = 0; file < FilesPerFolder; ++file)
            makeFile(opened, folder * FilesPerFolder + file);
        close(opened);
    }
}

} // namespace SearchTree
